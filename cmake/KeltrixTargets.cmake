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

# keltrix_target(TARGET): settings of any target.
function(keltrix_target target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_compile_options(${target} PRIVATE ${KELTRIX_CXX_OPTIONS})
  if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(${target} PRIVATE ${KELTRIX_CXX_WARNINGS})
  endif()
endfunction()

# keltrix_library(TARGET ALIAS BUILDING_MACRO): settings of an exported shared library, with the alias Keltrix::ALIAS.
# Soname: major.minor while the major version is 0, because any minor release may then break the interface.
function(keltrix_library target alias building)
  keltrix_target(${target})
  add_library(Keltrix::${alias} ALIAS ${target})
  target_compile_definitions(${target} PRIVATE ${building})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${alias} VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
    VERIFY_INTERFACE_HEADER_SETS ON)
endfunction()
