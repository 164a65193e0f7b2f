# fmt: headers alone, for a cross compiler.
include(${CMAKE_CURRENT_LIST_DIR}/SystemHeaders.cmake)
system_headers(fmt_headers fmt fmt/format.h)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(fmt REQUIRED_VARS fmt_headers)
if(fmt_FOUND AND NOT TARGET fmt::fmt-header-only)
  add_library(fmt::fmt-header-only INTERFACE IMPORTED)
  set_target_properties(fmt::fmt-header-only PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${fmt_headers}")
endif()
