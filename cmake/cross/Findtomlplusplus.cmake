include(${CMAKE_CURRENT_LIST_DIR}/SystemHeaders.cmake)
system_headers(tomlplusplus tomlplusplus::tomlplusplus toml++ toml++/toml.h)
