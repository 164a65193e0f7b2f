# Compares what a library exports with its reference list, one demangled name per line, sorted.
#   cmake -D LIBRARY=lib.so -D LIST=lib.symbols -D NM=nm -D CXXFILT=c++filt [-D REFRESH=1] -P ExportedSymbols.cmake
#
# Compared are strong symbols and what belongs to a class as a whole (its vtable and type information). Weak functions
# are left out: they are copies of inline operations and templates, which every module carries itself and which the
# compiler emits or not as it pleases. A name that is there twice (the complete and the base form of a constructor)
# is listed once.
execute_process(COMMAND ${NM} -D --defined-only ${LIBRARY} OUTPUT_VARIABLE symbols RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "cannot read the symbols of ${LIBRARY}")
endif()
string(REGEX MATCHALL "[^\n]+" symbols "${symbols}")
set(mangled "")
foreach(symbol IN LISTS symbols)
  if(symbol MATCHES "^[0-9a-f]+ [BDGRST] (_Z.*7Keltrix.*)$")
    list(APPEND mangled "${CMAKE_MATCH_1}")
  elseif(symbol MATCHES "^[0-9a-f]+ [VW] (_ZT[VIS]N.*7Keltrix.*)$")
    list(APPEND mangled "${CMAKE_MATCH_1}")
  endif()
endforeach()
set(input "")
foreach(name IN LISTS mangled)
  string(APPEND input "${name}\n")
endforeach()
set(scratch "${LIBRARY}.symbols")
file(WRITE "${scratch}.mangled" "${input}")
execute_process(COMMAND ${CXXFILT} INPUT_FILE "${scratch}.mangled" OUTPUT_VARIABLE demangled)
string(REGEX REPLACE "\\[abi:[a-z0-9]+\\]" "" demangled "${demangled}")
# Brackets would join list elements; the names are put back below.
string(REPLACE "[" "<:" demangled "${demangled}")
string(REPLACE "]" ":>" demangled "${demangled}")
string(REGEX MATCHALL "[^\n]+" demangled "${demangled}")
set(names ${demangled})
list(REMOVE_DUPLICATES names)
list(SORT names)
list(JOIN names "\n" actual)
string(REPLACE "<:" "[" actual "${actual}")
string(REPLACE ":>" "]" actual "${actual}")
string(APPEND actual "\n")
list(LENGTH names count)
if(count EQUAL 0)
  message(FATAL_ERROR "${LIBRARY} exports nothing")
endif()

if(REFRESH)
  file(WRITE "${LIST}" "${actual}")
  message(STATUS "${LIST}: ${count} names")
  return()
endif()

file(READ "${LIST}" expected)
if(actual STREQUAL expected)
  return()
endif()
file(WRITE "${scratch}" "${actual}")
execute_process(COMMAND diff -U0 "${LIST}" "${scratch}" OUTPUT_VARIABLE difference)
message(FATAL_ERROR
  "The exported symbols of ${LIBRARY} are not those of ${LIST} (- missing now, + new):\n${difference}\n"
  "A symbol that is gone breaks modules built against an earlier release. Where the change is meant, refresh the list\n"
  "and say so in CHANGELOG.md:\n"
  "  cmake --build BUILD --target refresh-exported-symbols")
