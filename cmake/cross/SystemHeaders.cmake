include(FindPackageHandleStandardArgs)

# system_headers(PACKAGE TARGET NAME LOOKED_FOR [FOLDER]): a package of headers alone for a cross compiler. TARGET includes a directory that holds NAME
# alone, a file or folder of the system's headers, where LOOKED_FOR exists, because a cross compiler must not see the other headers beside it.
macro(system_headers package target name looked_for)
  find_path(${package}_where "${looked_for}" PATHS /usr/include /usr/local/include PATH_SUFFIXES ${ARGN}
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  mark_as_advanced(${package}_where)
  find_package_handle_standard_args(${package} REQUIRED_VARS ${package}_where)
  if(${package}_FOUND AND NOT TARGET ${target})
    file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/headers/${name}")
    file(CREATE_LINK "${${package}_where}/${name}" "${CMAKE_BINARY_DIR}/headers/${name}/${name}" SYMBOLIC)
    add_library(${target} INTERFACE IMPORTED)
    set_target_properties(${target} PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${CMAKE_BINARY_DIR}/headers/${name}")
  endif()
endmacro()
