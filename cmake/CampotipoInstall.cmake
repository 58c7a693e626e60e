# Installation: libraries, headers, CMake package and pkg-config files, all relocatable.

include(CMakePackageConfigHelpers)

set_target_properties(campotipo-support PROPERTIES EXPORT_NAME support)
add_library(campotipo::campotipo ALIAS campotipo)
add_library(campotipo::support ALIAS campotipo-support)
if(NOT CAMPOTIPO_INSTALL)
  return()
endif()

# The two libraries find each other wherever the prefix is moved to. Packages for the system's own
# directories are built with CMAKE_SKIP_INSTALL_RPATH.
set_target_properties(campotipo PROPERTIES INSTALL_RPATH "$ORIGIN")
if(CAMPOTIPO_HWCAPS)
  # The loader looks into the folders of newer processors below this one by itself, and finds the
  # services above them too, where a site has put its own in their place.
  set_target_properties(campotipo_v3 PROPERTIES INSTALL_RPATH "$ORIGIN/../..")
endif()

install(TARGETS campotipo campotipo-support EXPORT campotipo
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development)
if(CAMPOTIPO_HWCAPS)
  install(TARGETS campotipo_v3 campotipo-support_v3
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/${CAMPOTIPO_HWCAPS_DIR}
    COMPONENT runtime NAMELINK_SKIP)
endif()
install(DIRECTORY library/include/campotipo library/support/include/campotipo-support
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development FILES_MATCHING PATTERN "*.h")

install(FILES packaging/valgrind.supp DESTINATION ${CMAKE_INSTALL_DATADIR}/campotipo
  COMPONENT development)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/campotipo)
install(EXPORT campotipo NAMESPACE campotipo:: DESTINATION ${package_dir}
  FILE campotipoTargets.cmake COMPONENT development)
configure_package_config_file(cmake/campotipoConfig.cmake.in
  ${PROJECT_BINARY_DIR}/campotipoConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/campotipoConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/campotipoConfig.cmake
  ${PROJECT_BINARY_DIR}/campotipoConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT development)

# A .pc file finds its prefix from where it lies, so that a moved installation still works. An
# absolute directory stays as it was given.
foreach(kind LIBDIR INCLUDEDIR)
  if(IS_ABSOLUTE ${CMAKE_INSTALL_${kind}})
    set(pc_${kind} ${CMAKE_INSTALL_${kind}})
  else()
    set(pc_${kind} "\${prefix}/${CMAKE_INSTALL_${kind}}")
  endif()
endforeach()
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  set(pc_PREFIX ${CMAKE_INSTALL_PREFIX})
else()
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
    BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig OUTPUT_VARIABLE up)
  set(pc_PREFIX "\${pcfiledir}/${up}")
endif()
set(pc_libraries campotipo campotipo-support)
if(CAMPOTIPO_BUILD_TOOLS)
  list(APPEND pc_libraries campotipo-records)
endif()
foreach(library ${pc_libraries})
  configure_file(cmake/${library}.pc.in ${PROJECT_BINARY_DIR}/${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endforeach()

# The system's prefixes do not move. Named in full, pkg-config knows their folders and leaves out -I
# and -L of those that the compiler searches anyway.
if(NOT IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  install(CODE "set(folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
    set(libraries ${pc_libraries})" COMPONENT development)
  install(CODE [[
    if(CMAKE_INSTALL_PREFIX MATCHES "^/usr(/local)?$")
      foreach(library IN LISTS libraries)
        set(file $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${folder}/${library}.pc)
        file(READ ${file} text)
        string(REGEX REPLACE "^prefix=[^\n]*" "prefix=${CMAKE_INSTALL_PREFIX}" text "${text}")
        file(WRITE ${file} "${text}")
      endforeach()
    endif()]] COMPONENT development)
endif()

# What an installation put there, file by file, taken away again.
if(PROJECT_IS_TOP_LEVEL)
  add_custom_target(uninstall VERBATIM
    COMMAND ${CMAKE_COMMAND} -DMANIFEST=${PROJECT_BINARY_DIR}/install_manifest.txt
      -DPREFIX=${CMAKE_INSTALL_PREFIX} -P ${PROJECT_SOURCE_DIR}/cmake/CampotipoUninstall.cmake)
endif()
