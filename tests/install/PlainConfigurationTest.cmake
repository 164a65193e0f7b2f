# The plain `cmake -S . -B build` on a machine that has a compiler and nothing else.

set(absent -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON -DCMAKE_DISABLE_FIND_PACKAGE_CLI11=ON
  -DCMAKE_DISABLE_FIND_PACKAGE_nlohmann_json=ON -DCMAKE_DISABLE_FIND_PACKAGE_tomlplusplus=ON -DCMAKE_DISABLE_FIND_PACKAGE_Eigen3=ON)
file(REMOVE_RECURSE "${WORK}")
execute_process(COMMAND ${CMAKE_COMMAND} -S "${SOURCE}" -B "${WORK}" -G ${GENERATOR} "-DCMAKE_CXX_COMPILER=${CXX}" ${absent}
  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "configuring failed:\n${output}")
endif()
foreach(text IN ITEMS
    "Left out, ksteel: CLI11, nlohmann_json, tomlplusplus not found (on Debian: apt-get install libcli11-dev nlohmann-json3-dev libtomlplusplus-dev)"
    "Left out, stability (elastic critical loads), statics (beams from loads) and the design codes, which are built on the former: Eigen3 not found (on Debian: apt-get install libeigen3-dev)"
    "Left out, most tests: GTest not found (on Debian: apt-get install libgtest-dev libgmock-dev)"
    "shared libraries: platform, steel, design\n")
  string(FIND "${output}" "${text}" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "expected \"${text}\" in the output, got:\n${output}")
  endif()
endforeach()

# What a developer or a gate asks for is not left out in silence.
execute_process(COMMAND ${CMAKE_COMMAND} -S "${SOURCE}" -B "${WORK}" -DKELTRIX_REQUIRE_ALL=ON
  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(status EQUAL 0 OR NOT output MATCHES "Cannot build stability")
  message(FATAL_ERROR "missing packages were accepted:\n${output}")
endif()
