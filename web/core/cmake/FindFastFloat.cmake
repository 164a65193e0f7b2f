# fast_float: headers alone, for a cross compiler.
include(${CMAKE_CURRENT_LIST_DIR}/SystemHeaders.cmake)
system_headers(FastFloat_headers fast_float fast_float/fast_float.h)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(FastFloat REQUIRED_VARS FastFloat_headers)
if(FastFloat_FOUND AND NOT TARGET FastFloat::fast_float)
  add_library(FastFloat::fast_float INTERFACE IMPORTED)
  set_target_properties(FastFloat::fast_float PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${FastFloat_headers}")
endif()
