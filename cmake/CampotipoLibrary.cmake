# How a subsystem becomes objects and how objects become one of the two shared libraries.

set(CAMPOTIPO_INCLUDE_DIRS ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/support/include)

# Interface target: what every translation unit of the project is compiled with.
add_library(campotipo_flags INTERFACE)
target_compile_features(campotipo_flags INTERFACE cxx_std_20 c_std_99)
target_compile_options(campotipo_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wundef -Wcast-qual
  $<$<COMPILE_LANGUAGE:C>:-Wstrict-prototypes -Wmissing-prototypes>
  $<$<BOOL:${CAMPOTIPO_MARCH}>:-march=${CAMPOTIPO_MARCH}>)
target_compile_definitions(campotipo_flags INTERFACE
  $<$<BOOL:${CAMPOTIPO_PLAIN_READS}>:CAMPOTIPO_PLAIN_READS>)
if(CAMPOTIPO_SANITIZE)
  target_compile_options(campotipo_flags INTERFACE
    -fsanitize=${CAMPOTIPO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(campotipo_flags INTERFACE -fsanitize=${CAMPOTIPO_SANITIZE})
endif()

# What only the libraries are compiled with. Sanitizers need the C++ driver and intercepted calls.
add_library(campotipo_library_flags INTERFACE)
target_link_libraries(campotipo_library_flags INTERFACE campotipo_flags)
target_compile_definitions(campotipo_library_flags INTERFACE CAMPOTIPO_BUILDING)
target_compile_options(campotipo_library_flags INTERFACE
  -iquote${PROJECT_SOURCE_DIR} -fno-semantic-interposition
  -fstack-protector-strong -fcf-protection -fno-plt
  $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti -fno-threadsafe-statics>)
if(NOT CAMPOTIPO_SANITIZE)
  target_compile_options(campotipo_library_flags INTERFACE
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
endif()

# campotipo_subsystem(NAME SOURCES file... ARROWS subsystem...)
# ARROWS names the subsystems whose headers this one may include; tests/abi holds the sources to it.
function(campotipo_subsystem name)
  cmake_parse_arguments(arg "" "" "SOURCES;ARROWS" ${ARGN})
  add_library(campotipo_${name} OBJECT ${arg_SOURCES})
  target_link_libraries(campotipo_${name} PRIVATE campotipo_library_flags)
  target_include_directories(campotipo_${name} PRIVATE ${CAMPOTIPO_INCLUDE_DIRS})
  set_target_properties(campotipo_${name} PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    C_VISIBILITY_PRESET hidden CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    CXX_EXTENSIONS OFF CAMPOTIPO_ARROWS "${arg_ARROWS}")
  set_property(GLOBAL APPEND PROPERTY CAMPOTIPO_ARROWS "${name}:${arg_ARROWS}")
endfunction()

# Writes the linker version script of a library from its sorted list of exports. Hidden visibility
# alone still lets weak symbols of the C++ headers out.
function(campotipo_version_script exports script node)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${exports})
  file(STRINGS ${exports} names)
  list(JOIN names ";\n    " body)
  file(CONFIGURE OUTPUT ${script}
    CONTENT "${node} {\n  global:\n    ${body};\n  local:\n    *;\n};\n" @ONLY)
endfunction()

# campotipo_shared_library(NAME EXPORTS list SUBSYSTEMS subsystem... INCLUDE directory)
function(campotipo_shared_library name)
  cmake_parse_arguments(arg "" "EXPORTS;INCLUDE" "SUBSYSTEMS" ${ARGN})
  set(script ${PROJECT_BINARY_DIR}/${name}.map)
  campotipo_version_script(${PROJECT_SOURCE_DIR}/${arg_EXPORTS} ${script}
    CAMPOTIPO_${CAMPOTIPO_ABI})
  list(TRANSFORM arg_SUBSYSTEMS REPLACE "(.+)" "$<TARGET_OBJECTS:campotipo_\\1>" OUTPUT_VARIABLE objects)
  add_library(${name} SHARED ${objects})
  target_include_directories(${name} INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${arg_INCLUDE}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_options(${name} PRIVATE
    -Wl,--version-script=${script} -Wl,-Bsymbolic-functions -Wl,--as-needed
    -Wl,-z,relro,-z,now,-z,noexecstack)
  set_target_properties(${name} PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${CAMPOTIPO_ABI} LINK_DEPENDS ${script})
  if(CAMPOTIPO_SANITIZE)
    target_link_libraries(${name} PRIVATE campotipo_flags)
  else()
    # The C driver, so that the C library is all that is needed.
    target_link_options(${name} PRIVATE -Wl,-z,defs)
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE C)
  endif()
endfunction()
