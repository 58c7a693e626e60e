# How a subsystem becomes objects and how objects become one of the two shared libraries.

set(CAMPOTIPO_INCLUDE_DIRS ${PROJECT_SOURCE_DIR}/library/include
  ${PROJECT_SOURCE_DIR}/library/support/include)

# Interface target: what every translation unit of the project is compiled with.
add_library(campotipo_flags INTERFACE)
target_compile_features(campotipo_flags INTERFACE cxx_std_20 c_std_99)
target_compile_options(campotipo_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wundef -Wcast-qual
  $<$<COMPILE_LANGUAGE:C>:-Wstrict-prototypes -Wmissing-prototypes>
  $<$<BOOL:${CAMPOTIPO_MARCH}>:-march=${CAMPOTIPO_MARCH}>)
target_compile_definitions(campotipo_flags INTERFACE
  $<$<BOOL:${CAMPOTIPO_PLAIN_READS}>:CAMPOTIPO_PLAIN_READS>
  $<$<BOOL:${CAMPOTIPO_PLAIN}>:CAMPOTIPO_PLAIN>)
if(CAMPOTIPO_SANITIZE)
  target_compile_options(campotipo_flags INTERFACE
    -fsanitize=${CAMPOTIPO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    # Its run-time part is C++, which programs in C are not linked with.
    target_compile_options(campotipo_flags INTERFACE -fno-sanitize=function)
  endif()
  target_link_options(campotipo_flags INTERFACE -fsanitize=${CAMPOTIPO_SANITIZE})
  # A fuzzer learns of a new way through the code only where the code counts its ways.
  if(CAMPOTIPO_BUILD_FUZZ AND CMAKE_CXX_COMPILER_ID MATCHES Clang)
    target_compile_options(campotipo_flags INTERFACE -fsanitize=fuzzer-no-link)
  endif()
endif()

# Marks for control-flow protection, where the processor knows them.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fcf-protection CAMPOTIPO_HAS_CF_PROTECTION)

# What only the libraries are compiled with. The tests read their records and arguments from the
# debug information. Sanitizers need the C++ driver and intercepted calls.
add_library(campotipo_library_flags INTERFACE)
target_link_libraries(campotipo_library_flags INTERFACE campotipo_flags)
target_compile_definitions(campotipo_library_flags INTERFACE CAMPOTIPO_BUILDING)
target_compile_options(campotipo_library_flags INTERFACE
  -iquote${PROJECT_SOURCE_DIR}/library -fno-semantic-interposition
  -fstack-protector-strong -fno-plt
  $<$<BOOL:${CAMPOTIPO_HAS_CF_PROTECTION}>:-fcf-protection>
  $<$<BOOL:${CAMPOTIPO_BUILD_TESTS}>:-g>
  $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti -fno-threadsafe-statics>)
if(NOT CAMPOTIPO_SANITIZE)
  target_compile_options(campotipo_library_flags INTERFACE
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
endif()

# Each build of the libraries: its suffix on target names, and what -march it asks for. The second
# one is put where the loader of newer processors looks first.
set(CAMPOTIPO_BUILDS "_base")
if(CAMPOTIPO_HWCAPS)
  list(APPEND CAMPOTIPO_BUILDS "_v3")
endif()
set(CAMPOTIPO_HWCAPS_DIR glibc-hwcaps/x86-64-v3)

# campotipo_subsystem(NAME SOURCES file... ARROWS subsystem... [INCLUDE directory...])
# ARROWS names the subsystems whose headers this one may include; tests/abi holds the sources to it.
# INCLUDE is for what stands below the library and sees none of its headers.
function(campotipo_subsystem name)
  cmake_parse_arguments(arg "" "" "SOURCES;ARROWS;INCLUDE" ${ARGN})
  if(NOT arg_INCLUDE)
    set(arg_INCLUDE ${CAMPOTIPO_INCLUDE_DIRS})
  endif()
  foreach(build ${CAMPOTIPO_BUILDS})
    set(objects campotipo_${name}${build})
    add_library(${objects} OBJECT ${arg_SOURCES})
    target_link_libraries(${objects} PRIVATE campotipo_library_flags)
    target_include_directories(${objects} PRIVATE ${arg_INCLUDE})
    set_target_properties(${objects} PROPERTIES
      POSITION_INDEPENDENT_CODE ON
      C_VISIBILITY_PRESET hidden CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
      CXX_EXTENSIONS OFF)
    if(build STREQUAL "_v3")
      target_compile_options(${objects} PRIVATE -march=x86-64-v3)
    endif()
  endforeach()
  list(JOIN arg_ARROWS " " arrows)
  set_property(GLOBAL APPEND PROPERTY CAMPOTIPO_ARROWS
    "library/${name}: base ${name} ${arrows}")
endfunction()

# campotipo_component(NAME FOLDERS folder... ARROWS component...)
# A component above the library: its folders include each other and those of the components that
# ARROWS names, and of the library its installed headers alone.
function(campotipo_component name)
  cmake_parse_arguments(arg "" "" "FOLDERS;ARROWS" ${ARGN})
  set(known ${arg_FOLDERS})
  foreach(arrow ${arg_ARROWS})
    get_property(more GLOBAL PROPERTY CAMPOTIPO_FOLDERS_${arrow})
    list(APPEND known ${more})
  endforeach()
  set_property(GLOBAL PROPERTY CAMPOTIPO_FOLDERS_${name} "${known}")
  list(JOIN known " " arrows)
  foreach(folder ${arg_FOLDERS})
    set_property(GLOBAL APPEND PROPERTY CAMPOTIPO_ARROWS "${name}/${folder}: ${arrows}")
  endforeach()
endfunction()

# Writes the linker version script of a library from its sorted lists of exports. Hidden visibility
# alone still lets weak symbols of the C++ headers out.
function(campotipo_version_script script node)
  set(names)
  foreach(list ${ARGN})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${list})
    file(STRINGS ${PROJECT_SOURCE_DIR}/${list} more)
    list(APPEND names ${more})
  endforeach()
  list(JOIN names ";\n    " body)
  file(CONFIGURE OUTPUT ${script}
    CONTENT "${node} {\n  global:\n    ${body};\n  local:\n    *;\n};\n" @ONLY)
endfunction()

# campotipo_shared_library(NAME EXPORTS list... SUBSYSTEMS subsystem... INCLUDE directory)
function(campotipo_shared_library name)
  cmake_parse_arguments(arg "" "INCLUDE" "EXPORTS;SUBSYSTEMS" ${ARGN})
  set(script ${PROJECT_BINARY_DIR}/${name}.map)
  campotipo_version_script(${script} CAMPOTIPO_${CAMPOTIPO_ABI} ${arg_EXPORTS})
  foreach(build ${CAMPOTIPO_BUILDS})
    set(objects)
    foreach(subsystem ${arg_SUBSYSTEMS})
      list(APPEND objects $<TARGET_OBJECTS:campotipo_${subsystem}${build}>)
    endforeach()
    set(library ${name})
    if(build STREQUAL "_v3")
      set(library ${name}_v3)
    endif()
    add_library(${library} SHARED ${objects})
    target_link_options(${library} PRIVATE
      -Wl,--version-script=${script} -Wl,-Bsymbolic-functions -Wl,--as-needed
      -Wl,-z,relro,-z,now,-z,noexecstack)
    set_target_properties(${library} PROPERTIES
      VERSION ${PROJECT_VERSION} SOVERSION ${CAMPOTIPO_ABI} LINK_DEPENDS ${script})
    if(CAMPOTIPO_SANITIZE)
      target_link_libraries(${library} PRIVATE campotipo_flags)
    else()
      # The C driver, so that the C library is all that is needed, and no start files: nothing runs
      # when the library is loaded, and the system's own do not carry control-flow protection.
      target_link_options(${library} PRIVATE -Wl,-z,defs -nostartfiles)
      set_target_properties(${library} PROPERTIES LINKER_LANGUAGE C)
    endif()
    if(build STREQUAL "_v3")
      set_target_properties(${library} PROPERTIES OUTPUT_NAME ${name}
        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${CAMPOTIPO_HWCAPS_DIR})
    endif()
  endforeach()
  target_include_directories(${name} INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${arg_INCLUDE}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endfunction()
