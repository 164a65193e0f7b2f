include(${CMAKE_CURRENT_LIST_DIR}/SystemHeaders.cmake)
system_headers(FastFloat FastFloat::fast_float fast_float fast_float/fast_float.h)
