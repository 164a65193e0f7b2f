include(${CMAKE_CURRENT_LIST_DIR}/SystemHeaders.cmake)
system_headers(CLI11 CLI11::CLI11 CLI CLI/CLI.hpp)
