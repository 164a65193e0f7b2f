# Builds for Windows (x86-64) with mingw-w64 on Debian: cmake -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake ...
# The compiler with posix threads, which has std::thread. Programs and DLLs hold its libraries, so that they need nothing but Windows.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Without the time of linking the same sources give the same bytes.
foreach(kind IN ITEMS EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
endforeach()

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Wine runs what was built: manual pages and tests.
find_program(KELTRIX_WINE NAMES wine64 wine PATHS /usr/lib/wine)
mark_as_advanced(KELTRIX_WINE)
if(KELTRIX_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${KELTRIX_WINE}")
endif()
