# What `cmake --install` puts in: headers, libraries, the CMake package, the pkg-config files and ksteel.
# The installed tree can be moved as a whole: nothing in it names its prefix. Components are the packages: "libraries", "development", "ksteel".
include(CMakePackageConfigHelpers)

get_property(libraries GLOBAL PROPERTY KELTRIX_LIBRARIES)

set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH pkgconfig_to_prefix "/${pkgconfig_dir}" "/")
set(components "")
foreach(library IN LISTS libraries)
  set(target keltrix-${library})
  install(TARGETS ${target} EXPORT KeltrixSteelTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT libraries
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libraries NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

  get_target_property(component ${target} EXPORT_NAME)
  list(APPEND components ${component})
  set(requires "")
  get_target_property(dependencies ${target} INTERFACE_LINK_LIBRARIES)
  foreach(dependency IN LISTS dependencies)
    if(TARGET ${dependency})
      get_target_property(dependency ${dependency} ALIASED_TARGET)
      list(APPEND requires ${dependency})
    endif()
  endforeach()
  list(JOIN requires " " requires)
  get_target_property(definitions ${target} INTERFACE_COMPILE_DEFINITIONS)
  set(definition_flags "")
  foreach(definition IN LISTS definitions)
    if(definition AND NOT definition MATCHES "^\\$<BUILD_INTERFACE:")
      string(APPEND definition_flags " -D${definition}")
    endif()
  endforeach()
  configure_file("${CMAKE_CURRENT_LIST_DIR}/keltrix.pc.in" "${PROJECT_BINARY_DIR}/cmake/${target}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/cmake/${target}.pc" DESTINATION "${pkgconfig_dir}" COMPONENT development)
endforeach()

# The program finds the libraries by their place relative to itself. It lies in app/ while it is built, and the libraries as
# far from there as from where it is installed.
if(TARGET ksteel)
  file(RELATIVE_PATH bin_to_lib "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
  set_target_properties(ksteel PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}" BUILD_WITH_INSTALL_RPATH ON)
  install(TARGETS ksteel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ksteel)
endif()

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/KeltrixSteel")
configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/KeltrixSteelConfig.cmake.in" "${PROJECT_BINARY_DIR}/cmake/KeltrixSteelConfig.cmake"
  INSTALL_DESTINATION "${package_dir}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/cmake/KeltrixSteelConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/cmake/KeltrixSteelConfig.cmake"
  "${PROJECT_BINARY_DIR}/cmake/KeltrixSteelConfigVersion.cmake"
  DESTINATION "${package_dir}" COMPONENT development)
install(EXPORT KeltrixSteelTargets NAMESPACE Keltrix:: DESTINATION "${package_dir}" COMPONENT development)
