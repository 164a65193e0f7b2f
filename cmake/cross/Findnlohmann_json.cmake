include(${CMAKE_CURRENT_LIST_DIR}/SystemHeaders.cmake)
system_headers(nlohmann_json nlohmann_json::nlohmann_json nlohmann nlohmann/json.hpp)
