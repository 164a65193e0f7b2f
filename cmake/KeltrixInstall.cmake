# What `cmake --install` puts in: headers, shared libraries, the CMake package, the pkg-config file and ksteel.
# The installed tree can be moved as a whole: nothing in it names its prefix.
include(CMakePackageConfigHelpers)

# Programs find the libraries, and the libraries each other, by their place relative to themselves.
file(RELATIVE_PATH bin_to_lib "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
foreach(target IN ITEMS keltrix-platform keltrix-steel keltrix-design keltrix-bs5950)
  if(TARGET ${target})
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${target} EXPORT KeltrixSteelTargets
      RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
      LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
      ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
      FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  endif()
endforeach()
if(TARGET ksteel)
  set_target_properties(ksteel PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
  install(TARGETS ksteel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
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
  DESTINATION "${package_dir}")
install(EXPORT KeltrixSteelTargets NAMESPACE Keltrix:: DESTINATION "${package_dir}")

set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH pkgconfig_to_prefix "/${pkgconfig_dir}" "/")
configure_file("${CMAKE_CURRENT_LIST_DIR}/keltrix-steel.pc.in" "${PROJECT_BINARY_DIR}/cmake/keltrix-steel.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/cmake/keltrix-steel.pc" DESTINATION "${pkgconfig_dir}")
