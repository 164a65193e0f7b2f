# Debian packages by `cpack -G DEB`. With KELTRIX_PACKAGES: libkeltrix-steel0, libkeltrix-steel-dev, ksteel, and python3-keltrix where the Python
# package is built. In a build folder with static libraries: python3-keltrix alone, whole by itself. For Windows ./package makes a zip of what is
# installed; all that is done for it here is the text with the terms.
set(with_python FALSE)
if(KELTRIX_PYTHON_DIR AND TARGET keltrix-python)
  set(with_python TRUE)
endif()
if(KELTRIX_PACKAGES AND NOT (BUILD_SHARED_LIBS AND TARGET ksteel))
  message(FATAL_ERROR "KELTRIX_PACKAGES wants shared libraries and ksteel")
endif()
if(NOT KELTRIX_PACKAGES AND NOT (with_python AND NOT BUILD_SHARED_LIBS))
  return()
endif()

# The terms of the works of others that are compiled in.
if(KELTRIX_PACKAGES)
  set(doc_dir "${PROJECT_BINARY_DIR}/cmake/doc")
  file(READ "${CMAKE_CURRENT_LIST_DIR}/packages/copyright" own)
  set(parts libeigen3-dev nlohmann-json3-dev libtomlplusplus-dev libcli11-dev)
  if(with_python)
    list(APPEND parts pybind11-dev)
  endif()
  set(notices "")
  foreach(part IN LISTS parts)
    set(file "/usr/share/doc/${part}/copyright")
    if(NOT EXISTS "${file}")
      message(FATAL_ERROR "the terms of ${part} must go into the packages: there is no ${file}")
    endif()
    file(READ "${file}" terms)
    string(REPEAT "=" 78 rule)
    string(APPEND notices "\n${rule}\n${part}\n${rule}\n\n${terms}")
  endforeach()
  file(WRITE "${doc_dir}/copyright" "${own}${notices}")
  if(WIN32)
    install(FILES "${doc_dir}/copyright" DESTINATION "share/doc/ksteel" COMPONENT ksteel)
    return()
  endif()
endif()

set(CPACK_PACKAGE_NAME keltrix)
set(CPACK_PACKAGE_CONTACT "Keltrix Steel <keltrix-steel@localhost>" CACHE STRING "Maintainer of the Debian packages")
# Each package says in its first line what it is; a common one would come before that.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_DEFAULT_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL "")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(with_python)
  list(APPEND CPACK_COMPONENTS_ALL python)
  get_property(python_version GLOBAL PROPERTY KELTRIX_PYTHON_VERSION)
  # The module is of one version of Python.
  string(REPLACE "." ";" python_version_parts "${python_version}")
  list(GET python_version_parts 1 next_python)
  math(EXPR next_python "${next_python} + 1")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-keltrix)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= ${python_version}), python3 (<< 3.${next_python}), python3-numpy")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-pandas, python3-openpyxl, python3-dask, python3-distributed")
  set(CPACK_DEBIAN_PYTHON_DESCRIPTION
    "steel members checked to design codes, from Python\nSections, beams and members, their checks, designs and calculation sheets,\nfor scripts and notebooks. The design codes are part of the package.")
endif()

if(KELTRIX_PACKAGES)
  list(APPEND CPACK_COMPONENTS_ALL libraries development ksteel)
  set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
  set(CPACK_DEBIAN_PACKAGE_SOURCE keltrix-steel)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
  # Until 1.0 any release may change the interface: what is built against one wants that one.
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")
  set(same_version "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

  set(CPACK_DEBIAN_LIBRARIES_PACKAGE_NAME libkeltrix-steel0)
  set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SECTION libs)
  set(CPACK_DEBIAN_LIBRARIES_DESCRIPTION
    "steel members checked to design codes, shared libraries\nSection properties, members and results, BS 5950-1:2000 and EN 1993-1-1,\nelastic critical loads, beams from loads to combinations and deflections.")
  # The loader learns of the libraries.
  set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_LIST_DIR}/packages/triggers")

  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkeltrix-steel-dev)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libkeltrix-steel0 ${same_version}, libstdc++-12-dev | libstdc++-dev")
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "cmake, pkgconf")
  set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "steel members checked to design codes, for C++ programs\nHeaders, the packages for CMake and pkg-config, and the library that reads\nand checks files as ksteel does. Programs and design codes are built against\nit.")

  set(CPACK_DEBIAN_KSTEEL_PACKAGE_NAME ksteel)
  set(CPACK_DEBIAN_KSTEEL_PACKAGE_SECTION science)
  set(CPACK_DEBIAN_KSTEEL_PACKAGE_DEPENDS "libkeltrix-steel0 ${same_version}")
  set(CPACK_DEBIAN_KSTEEL_DESCRIPTION
    "steel members checked to design codes, at the command line\nReads beam and member files, checks them to BS 5950-1:2000 and EN 1993-1-1,\nfinds the lightest section that passes, and writes calculation sheets.")

  if(with_python)
    string(APPEND CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS ", libkeltrix-steel0 ${same_version}")
  endif()

  # What Debian wants of each package: what changed, and who owns what. The date is that of SOURCE_DATE_EPOCH.
  string(TIMESTAMP package_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
  set(package_version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
  configure_file("${CMAKE_CURRENT_LIST_DIR}/packages/changelog.in" "${doc_dir}/changelog.Debian" @ONLY)
  execute_process(COMMAND gzip -9nkf "${doc_dir}/changelog.Debian" COMMAND_ERROR_IS_FATAL ANY)
  foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    install(FILES "${doc_dir}/copyright" "${doc_dir}/changelog.Debian.gz"
      DESTINATION "share/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}" COMPONENT ${component})
  endforeach()
endif()
include(CPack)
