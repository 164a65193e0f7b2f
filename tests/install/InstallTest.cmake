# Installs the build into WORK/first, moves it to WORK/moved, and uses it there.

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

# find_package: a consumer and a code module of its own.
run("configuring the consumer" ${CMAKE_COMMAND} -S "${CONSUMER}" -B "${WORK}/consumer" -G ${GENERATOR}
  "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}"
  "-DCMAKE_BUILD_TYPE=${CONFIG}" "-DEXPECTED_VERSION=${VERSION}")
run("building the consumer" ${CMAKE_COMMAND} --build "${WORK}/consumer" --config ${CONFIG})
run("running the consumer" "${WORK}/consumer/consumer")
expect_text("the consumer" "Pinned\n453.4 mm deep")
run("running the code module's host" "${WORK}/consumer/host")
expect_text("the code module's host" "PASS 0.561")

# The soname carries major.minor while the major version is 0.
string(REGEX MATCH "^[0-9]+\\.[0-9]+" soversion "${VERSION}")
foreach(library IN ITEMS platform steel)
  if(NOT EXISTS "${prefix}/${LIBDIR}/libkeltrix-${library}.so.${soversion}")
    message(FATAL_ERROR "libkeltrix-${library}.so.${soversion} is not installed")
  endif()
endforeach()

# pkg-config.
if(PKG_CONFIG)
  set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIBDIR}/pkgconfig")
  run("pkg-config" ${PKG_CONFIG} --modversion keltrix-steel)
  expect_text("pkg-config --modversion" "${VERSION}")
  run("pkg-config" ${PKG_CONFIG} --cflags --libs keltrix-steel)
  string(STRIP "${output}" flags)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  separate_arguments(own_flags UNIX_COMMAND "${CXX_FLAGS}")
  run("building with pkg-config's flags"
    ${CXX} ${own_flags} "${CONSUMER}/consumer.cpp" -o "${WORK}/pkg-consumer" ${flags} "-Wl,-rpath,${prefix}/${LIBDIR}")
  run("running what pkg-config's flags built" "${WORK}/pkg-consumer")
  expect_text("what pkg-config's flags built" "Pinned\n453.4 mm deep")
else()
  message(STATUS "pkg-config is not at hand: keltrix-steel.pc was not tried")
endif()

# The program finds its libraries by itself.
if(WITH_APP)
  set(ENV{LD_LIBRARY_PATH} "")
  run("running the installed ksteel" "${prefix}/bin/ksteel" --version)
  expect_text("ksteel --version" "${VERSION}")
endif()
