include(${CMAKE_CURRENT_LIST_DIR}/SystemHeaders.cmake)
system_headers(fmt fmt::fmt-header-only fmt fmt/format.h)
