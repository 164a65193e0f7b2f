# What every target of the project shares: language level, warnings, floating-point discipline, visibility.

# -ffp-contract=off: a formula gives the same digits on every machine, whether or not it has fused multiply-add.
# -fno-semantic-interposition: calls within a shared library go straight to its own functions, which g++ would otherwise
# leave open to replacement at load time; clang does so by itself.
set(KELTRIX_CXX_OPTIONS
  "$<$<CXX_COMPILER_ID:GNU,Clang>:-ffp-contract=off>"
  "$<$<CXX_COMPILER_ID:GNU>:-fno-semantic-interposition>")
set(KELTRIX_CXX_WARNINGS
  "$<$<CXX_COMPILER_ID:GNU,Clang>:-Wall;-Wextra;-Wpedantic;-Wshadow;-Wnon-virtual-dtor;-Woverloaded-virtual>"
  "$<$<AND:$<BOOL:${KELTRIX_WERROR}>,$<CXX_COMPILER_ID:GNU,Clang>>:-Werror>")

# What makes a mistake in reading an input end the program instead of carrying on: checked bounds of the C library, canaries on the
# stack, addresses that cannot be foreseen, tables of the loader that cannot be written after the start. docs/packages.md says what it costs.
option(KELTRIX_HARDENING "Harden programs and libraries, as packages have it (g++ or clang for ELF; needs optimisation)" OFF)
if(KELTRIX_HARDENING)
  if(WIN32 OR APPLE OR EMSCRIPTEN OR NOT CMAKE_CXX_COMPILER_ID MATCHES "^(GNU|Clang)$")
    message(FATAL_ERROR "KELTRIX_HARDENING is for g++ and clang on Linux alone")
  endif()
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  include(CheckPIESupported)
  check_pie_supported(LANGUAGES CXX)
  if(NOT CMAKE_CXX_LINK_PIE_SUPPORTED)
    message(FATAL_ERROR "KELTRIX_HARDENING: the linker makes no position-independent programs")
  endif()
  list(APPEND KELTRIX_CXX_OPTIONS
    -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  set(KELTRIX_LINK_OPTIONS -Wl,-z,relro,-z,now,-z,noexecstack)
endif()

# keltrix_target(TARGET): settings of any target.
function(keltrix_target target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_compile_options(${target} PRIVATE ${KELTRIX_CXX_OPTIONS})
  get_target_property(type ${target} TYPE)
  if(NOT type STREQUAL "STATIC_LIBRARY")
    target_link_options(${target} PRIVATE ${KELTRIX_LINK_OPTIONS})
    # .ci/sbom reads there what was linked.
    if(WIN32 AND KELTRIX_PACKAGES)
      target_link_options(${target} PRIVATE "LINKER:-Map,${PROJECT_BINARY_DIR}/${target}.map")
    endif()
  endif()
  if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(${target} PRIVATE ${KELTRIX_CXX_WARNINGS})
  endif()
endfunction()

# keltrix_reads_texts(TARGET): a target that reads what others wrote. Hardened, it has the checked bounds of the C++ library, too, which cost
# more than they are worth where only figures are worked on.
function(keltrix_reads_texts target)
  if(KELTRIX_HARDENING)
    target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
  endif()
endfunction()

# keltrix_library(NAME ALIAS SOURCES file... HEADERS file... [DEPENDS target...]): an exported library libkeltrix-NAME with the
# target Keltrix::ALIAS. Its public headers stand in include/keltrix/NAME, and its marks of what is exported depend on
# KELTRIX_NAME_BUILDING (defined here alone) and KELTRIX_NAME_STATIC (defined here and for users of a static library). All
# that is done for each library (installation, package, pkg-config, list of exported symbols) goes through the list
# KELTRIX_LIBRARIES of such NAMEs, a global property.
# Soname: major.minor while the major version is 0, because any minor release may then break the interface.
function(keltrix_library name alias)
  cmake_parse_arguments(PARSE_ARGV 2 ARG "" "" "SOURCES;HEADERS;DEPENDS")
  set(target keltrix-${name})
  string(TOUPPER "KELTRIX_${name}" macro)
  add_library(${target})
  add_library(Keltrix::${alias} ALIAS ${target})
  keltrix_target(${target})
  keltrix_batches(${target})
  target_sources(${target}
    PRIVATE ${ARG_SOURCES}
    PUBLIC FILE_SET HEADERS BASE_DIRS include FILES ${ARG_HEADERS})
  target_link_libraries(${target} PUBLIC ${ARG_DEPENDS})
  target_compile_definitions(${target} PRIVATE ${macro}_BUILDING)
  if(NOT BUILD_SHARED_LIBS)
    target_compile_definitions(${target} PUBLIC ${macro}_STATIC)
  endif()
  # Libraries lie to each other and to the programs as they do when installed, and find each other in the same way.
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${alias} VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
    POSITION_INDEPENDENT_CODE ON
    LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}"
    INSTALL_RPATH "$ORIGIN" BUILD_WITH_INSTALL_RPATH ON
    VERIFY_INTERFACE_HEADER_SETS ON)
  # A DLL has no soname: its name carries the version.
  if(WIN32)
    set_target_properties(${target} PROPERTIES
      RUNTIME_OUTPUT_NAME "${target}-${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
  endif()
  set_property(GLOBAL APPEND PROPERTY KELTRIX_LIBRARIES ${name})
endfunction()

# keltrix_batches(TARGET): larger batches of a unity build than CMake's 8 sources. Reading the same headers is a quarter of the compiler's time;
# still larger batches want more than a gigabyte of memory each.
function(keltrix_batches target)
  set_target_properties(${target} PROPERTIES UNITY_BUILD_BATCH_SIZE 16)
endfunction()

# keltrix_design_code(NAME ALIAS ...): a keltrix_library that is a design code; the host has those of the global property
# KELTRIX_DESIGN_CODES, a list of ALIASes, built in.
function(keltrix_design_code name alias)
  keltrix_library(${name} ${alias} ${ARGN})
  set_property(GLOBAL APPEND PROPERTY KELTRIX_DESIGN_CODES ${alias})
endfunction()

# keltrix_packages(RESULT WHAT DEBIAN_PACKAGES PACKAGE...): whether all packages are there. If not, WHAT is left out, and the
# end of the configuration says so; with KELTRIX_REQUIRE_ALL that is an error.
function(keltrix_packages result what debian)
  set(missing "")
  foreach(package IN LISTS ARGN)
    find_package(${package} QUIET)
    if(NOT ${package}_FOUND)
      list(APPEND missing ${package})
    endif()
  endforeach()
  set(${result} TRUE PARENT_SCOPE)
  if(missing)
    list(JOIN missing ", " missing)
    set(reason "${what}: ${missing} not found (on Debian: apt-get install ${debian})")
    if(KELTRIX_REQUIRE_ALL)
      message(FATAL_ERROR "Cannot build ${reason}")
    endif()
    set_property(GLOBAL APPEND PROPERTY KELTRIX_LEFT_OUT "${reason}")
    set(${result} FALSE PARENT_SCOPE)
  endif()
endfunction()

# keltrix_summary(): what is built and what is left out.
function(keltrix_summary)
  get_property(libraries GLOBAL PROPERTY KELTRIX_LIBRARIES)
  list(REMOVE_ITEM libraries testkit) # for tests alone, and always static
  list(JOIN libraries ", " libraries)
  set(kind static)
  if(BUILD_SHARED_LIBS)
    set(kind shared)
  endif()
  message(STATUS "Keltrix Steel ${PROJECT_VERSION}, ${kind} libraries: ${libraries}")
  get_property(left_out GLOBAL PROPERTY KELTRIX_LEFT_OUT)
  foreach(reason IN LISTS left_out)
    message(NOTICE "Left out, ${reason}")
  endforeach()
endfunction()
