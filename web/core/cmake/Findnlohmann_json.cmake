# nlohmann-json: headers alone, for a cross compiler.
include(${CMAKE_CURRENT_LIST_DIR}/SystemHeaders.cmake)
system_headers(nlohmann_json_headers nlohmann nlohmann/json.hpp)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(nlohmann_json REQUIRED_VARS nlohmann_json_headers)
if(nlohmann_json_FOUND AND NOT TARGET nlohmann_json::nlohmann_json)
  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
  set_target_properties(nlohmann_json::nlohmann_json PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${nlohmann_json_headers}")
endif()
