# Eigen: headers alone, for a cross compiler.
include(${CMAKE_CURRENT_LIST_DIR}/SystemHeaders.cmake)
system_headers(Eigen3_headers Eigen Eigen/Core eigen3)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Eigen3 REQUIRED_VARS Eigen3_headers)
if(Eigen3_FOUND AND NOT TARGET Eigen3::Eigen)
  add_library(Eigen3::Eigen INTERFACE IMPORTED)
  set_target_properties(Eigen3::Eigen PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${Eigen3_headers}")
endif()
