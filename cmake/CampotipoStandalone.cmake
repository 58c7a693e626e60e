# Files that stand alone: libraries which hold the C++ library, and so run beside any other and on
# systems older than the one they are built on.

# campotipo_standalone(TARGET): links the C++ library and what its functions would ask of a newer C
# library into the target, and lets nothing of it out.
function(campotipo_standalone target)
  target_link_options(${target} PRIVATE -static-libgcc -static-libstdc++
    -Wl,--exclude-libs,ALL -Wl,-Bsymbolic-functions -Wl,--as-needed
    -Wl,-z,relro,-z,now,-z,noexecstack)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64" AND NOT CAMPOTIPO_SANITIZE)
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/records/portable/older_glibc.cpp)
  endif()
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
endfunction()

# campotipo_with_core(TARGET): puts the library, its services and the records inside the target,
# which needs no file beside it. The target exports what its own version script names.
function(campotipo_with_core target)
  set(objects $<TARGET_OBJECTS:campotipo_support_base> $<TARGET_OBJECTS:campotipo_records>)
  foreach(subsystem ${CAMPOTIPO_SUBSYSTEMS})
    list(APPEND objects $<TARGET_OBJECTS:campotipo_${subsystem}_base>)
  endforeach()
  get_property(kernels GLOBAL PROPERTY CAMPOTIPO_KERNEL_OBJECTS)
  target_sources(${target} PRIVATE ${objects} ${kernels})
  target_include_directories(${target} PRIVATE ${CAMPOTIPO_INCLUDE_DIRS}
    ${PROJECT_SOURCE_DIR}/records/include)
  target_link_libraries(${target} PRIVATE campotipo_flags)
  campotipo_standalone(${target})
endfunction()
