# Run after a build of a test executable: writes the file that tells CTest its sandboxed cases.
#
# EXECUTABLE  the GoogleTest executable, FILTER the pattern of the cases wanted
# LAUNCHER    the command line that the executable and its arguments are appended to
# PROPERTIES  names and values of the CTest properties of each case; of two values the last counts
# LIST        the file to write

execute_process(
  COMMAND "${EXECUTABLE}" --gtest_list_tests "--gtest_filter=${FILTER}"
  OUTPUT_VARIABLE output RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${EXECUTABLE} does not list its tests: ${result}\n${output}")
endif()

function(quote_all out)
  set(quoted "")
  foreach(word IN LISTS ARGN)
    string(APPEND quoted " [==[${word}]==]")
  endforeach()
  set(${out} "${quoted}" PARENT_SCOPE)
endfunction()

quote_all(command ${LAUNCHER} "${EXECUTABLE}")
quote_all(properties SKIP_REGULAR_EXPRESSION "\\[  SKIPPED \\]" ${PROPERTIES})

# A suite stands at the start of its line and ends in a dot, its cases follow indented by two blanks;
# what comes after " # " describes a parameter.
set(suite "")
set(tests "")
string(REGEX REPLACE " +#[^\n]*" "" output "${output}")
string(REPLACE "\n" ";" lines "${output}")
foreach(line IN LISTS lines)
  if(line MATCHES "^[^ ]+\\.$")
    set(suite "${line}")
  elseif(NOT "${suite}${line}" MATCHES "DISABLED_" AND line MATCHES "^  ([^ ]+)$")
    set(case "${suite}${CMAKE_MATCH_1}")
    string(APPEND tests
           "add_test([==[${case}]==]${command} [==[--gtest_filter=${case}]==])\n"
           "set_tests_properties([==[${case}]==] PROPERTIES${properties})\n")
  endif()
endforeach()
if(tests STREQUAL "")
  message(FATAL_ERROR "${EXECUTABLE} has no case that matches ${FILTER}")
endif()
file(WRITE "${LIST}" "${tests}")
