include(${CMAKE_CURRENT_LIST_DIR}/SystemHeaders.cmake)
system_headers(Eigen3 Eigen3::Eigen Eigen Eigen/Core eigen3)
