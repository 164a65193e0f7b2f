# Installs the build into WORK/first, moves it to WORK/moved, and uses it there.

cmake_policy(VERSION 3.25)

function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "${what} failed (${status})\n${command}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_text what text)
  string(FIND "${output}" "${text}" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "${what}: expected \"${text}\" in the output, got:\n${output}")
  endif()
endfunction()

include("${CMAKE_CURRENT_LIST_DIR}/RunPaths.cmake")
string(REPLACE "," ";" LIBRARIES "${LIBRARIES}")
string(REPLACE "," ";" SHARED_LIBRARIES "${SHARED_LIBRARIES}")

file(REMOVE_RECURSE "${WORK}")
run("installing" ${CMAKE_COMMAND} --install ${BUILD} --config ${CONFIG} --prefix "${WORK}/first")
file(RENAME "${WORK}/first" "${WORK}/moved")
set(prefix "${WORK}/moved")

# Nothing installed may name the place it was built or first installed in. (Libraries of a debug build do, in their
# debug information.)
file(GLOB_RECURSE texts "${prefix}/*.cmake" "${prefix}/*.pc" "${prefix}/*.h")
if(NOT texts)
  message(FATAL_ERROR "nothing was installed into ${prefix}")
endif()
foreach(file IN LISTS texts)
  file(READ "${file}" content)
  foreach(place IN ITEMS "${WORK}" "${BUILD}")
    string(FIND "${content}" "${place}" found)
    if(NOT found EQUAL -1)
      message(FATAL_ERROR "${file} names ${place}, so the installation cannot be moved")
    endif()
  endforeach()
endforeach()

# What is built here is run once.
string(TOUPPER "${CONFIG}" config)
set(unoptimised "-DCMAKE_CXX_FLAGS_${config}=")

# find_package: a consumer and a code module of its own.
run("configuring the consumer" ${CMAKE_COMMAND} -S "${CONSUMER}" -B "${WORK}/consumer" -G ${GENERATOR}
  "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}"
  "-DCMAKE_BUILD_TYPE=${CONFIG}" ${unoptimised} "-DEXPECTED_VERSION=${VERSION}")
run("building the consumer" ${CMAKE_COMMAND} --build "${WORK}/consumer" --config ${CONFIG})
run("running the consumer" "${WORK}/consumer/consumer")
expect_text("the consumer" "Pinned\n453.4 mm deep")
run("running the code module's host" "${WORK}/consumer/host")
expect_text("the code module's host" "PASS 0.561")

# The soname carries major.minor while the major version is 0.
string(REGEX MATCH "^[0-9]+\\.[0-9]+" soversion "${VERSION}")
foreach(library IN LISTS LIBRARIES)
  if(library IN_LIST SHARED_LIBRARIES)
    set(file "${prefix}/${LIBDIR}/libkeltrix-${library}.so.${soversion}")
  else()
    set(file "${prefix}/${LIBDIR}/libkeltrix-${library}.a")
  endif()
  if(NOT EXISTS "${file}")
    message(FATAL_ERROR "${file} is not installed")
  endif()
  if(library IN_LIST SHARED_LIBRARIES AND READELF)
    check_run_paths("${file}")
  endif()
endforeach()

# pkg-config: a file for each library, and a program for each that includes all of its headers.
foreach(library IN LISTS LIBRARIES)
  if(NOT PKG_CONFIG)
    break()
  endif()
  set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIBDIR}/pkgconfig")
  run("pkg-config" ${PKG_CONFIG} --modversion keltrix-${library})
  expect_text("pkg-config --modversion" "${VERSION}")
  run("pkg-config" ${PKG_CONFIG} --cflags --libs keltrix-${library})
  string(STRIP "${output}" flags)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  separate_arguments(own_flags UNIX_COMMAND "${CXX_FLAGS}")
  if(library STREQUAL "steel")
    set(program "${CONSUMER}/consumer.cpp")
    set(expected "Pinned\n453.4 mm deep")
  else()
    file(GLOB headers RELATIVE "${prefix}/include" "${prefix}/include/keltrix/${library}/*.h")
    set(expected "${library}")
    set(text "#include <cstdio>\n")
    foreach(header IN LISTS headers)
      string(APPEND text "#include \"${header}\"\n")
    endforeach()
    set(program "${WORK}/${library}.cpp")
    file(WRITE "${program}" "${text}int main() { std::puts(\"${library}\"); }\n")
  endif()
  run("building with pkg-config's flags for ${library}"
    ${CXX} ${own_flags} "${program}" -o "${WORK}/pkg-${library}" ${flags} "-Wl,-rpath,${prefix}/${LIBDIR}")
  run("running what pkg-config's flags built" "${WORK}/pkg-${library}")
  expect_text("what pkg-config's flags for ${library} built" "${expected}")
endforeach()

# A design code of somebody else's, built against the package and loaded by the installed program.
if(WITH_APP AND SHARED_LIBRARIES AND NOT WIN32)
  run("configuring the sample design code" ${CMAKE_COMMAND} -S "${TIE_CODE}" -B "${WORK}/tie_code" -G ${GENERATOR}
    "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}"
    "-DCMAKE_BUILD_TYPE=${CONFIG}" ${unoptimised})
  run("building the sample design code" ${CMAKE_COMMAND} --build "${WORK}/tie_code" --config ${CONFIG})
  run("listing the sample design code" "${prefix}/bin/ksteel" --module "${WORK}/tie_code/tie_code.so" codes)
  expect_text("ksteel codes with the sample design code" "tie: Ties by stress")
  run("a capacity table by the sample design code"
    "${prefix}/bin/ksteel" --module "${WORK}/tie_code/tie_code.so" capacity "CHS 88.9x5" --code tie)
  expect_text("the capacity table of the sample design code" "309.7")
  if(EXISTS "${WORK}/tie_code/tie_test")
    run("the laws of the installed test kit on the sample design code" "${WORK}/tie_code/tie_test")
    expect_text("the laws on the sample design code" "[  PASSED  ] 1 test")
  endif()
endif()

# A program of somebody else's that reads and checks member files with the host library.
if("host" IN_LIST LIBRARIES AND "bs5950" IN_LIST LIBRARIES)
  run("configuring the sample host" ${CMAKE_COMMAND} -S "${EXAMPLES}/host" -B "${WORK}/check_text" -G ${GENERATOR}
    "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}"
    "-DCMAKE_BUILD_TYPE=${CONFIG}" ${unoptimised})
  run("building the sample host" ${CMAKE_COMMAND} --build "${WORK}/check_text" --config ${CONFIG})
  run("checking a member with the sample host" "${WORK}/check_text/check_text" "${EXAMPLES}/floor_beam.csv")
  expect_text("the sample host" "pass, governed by moment capacity, major axis (4.2.5) at 4.5 m")
endif()

# The program finds its libraries by itself.
if(WITH_APP)
  set(ENV{LD_LIBRARY_PATH} "")
  run("running the installed ksteel" "${prefix}/bin/ksteel" --version)
  expect_text("ksteel --version" "${VERSION}")
  if(READELF)
    check_run_paths("${prefix}/bin/ksteel")
  endif()
endif()
