# toml++: headers alone, for a cross compiler.
include(${CMAKE_CURRENT_LIST_DIR}/SystemHeaders.cmake)
system_headers(tomlplusplus_headers toml++ toml++/toml.h)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(tomlplusplus REQUIRED_VARS tomlplusplus_headers)
if(tomlplusplus_FOUND AND NOT TARGET tomlplusplus::tomlplusplus)
  add_library(tomlplusplus::tomlplusplus INTERFACE IMPORTED)
  set_target_properties(tomlplusplus::tomlplusplus PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${tomlplusplus_headers}")
endif()
