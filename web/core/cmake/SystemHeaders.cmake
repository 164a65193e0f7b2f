# system_headers(RESULT NAME LOOKED_FOR [FOLDER]): a directory that holds NAME alone, a file or folder of the system's headers, where LOOKED_FOR
# exists. A cross compiler must not see the other headers beside it. RESULT is empty where it is not there.
function(system_headers result name looked_for)
  find_path(${result}_where "${looked_for}" PATHS /usr/include /usr/local/include PATH_SUFFIXES ${ARGN}
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  mark_as_advanced(${result}_where)
  set(${result} "" PARENT_SCOPE)
  if(${result}_where)
    set(folder "${CMAKE_BINARY_DIR}/headers/${name}")
    file(MAKE_DIRECTORY "${folder}")
    file(CREATE_LINK "${${result}_where}/${name}" "${folder}/${name}" SYMBOLIC)
    set(${result} "${folder}" PARENT_SCOPE)
  endif()
endfunction()
