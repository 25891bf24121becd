# Run after a build of a test executable: writes the file that tells CTest its tests.
#
# EXECUTABLE  the GoogleTest executable, FILTER the pattern of the cases wanted
# BY          what is a test of CTest's: each "case", or each "suite", whose cases share a process
# LAUNCHER    the command line that the executable and its arguments are appended to
# PROPERTIES  names and values of the CTest properties of each test; of two values the last counts
# LIST        the file to write

cmake_minimum_required(VERSION 3.16)

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
quote_all(properties ${PROPERTIES})
if(BY STREQUAL "case")
  quote_all(skips SKIP_REGULAR_EXPRESSION "\\[  SKIPPED \\]")
  string(APPEND properties "${skips}")
endif()

set(tests "")
macro(add_one name filter)
  string(APPEND tests "add_test([==[${name}]==]${command} [==[--gtest_filter=${filter}]==])\n"
                      "set_tests_properties([==[${name}]==] PROPERTIES${properties})\n")
endmacro()

# A suite stands at the start of its line and ends in a dot, its cases follow indented by two spaces;
# what comes after " # " describes a parameter.
set(suite "")
string(REGEX REPLACE " +#[^\n]*" "" output "${output}")
string(REPLACE "\n" ";" lines "${output}")
foreach(line IN LISTS lines)
  if(line MATCHES "^([^ ]+)\\.$")
    set(suite "${line}")
    if(BY STREQUAL "suite")
      add_one("${CMAKE_MATCH_1}" "${suite}*")
    endif()
  elseif(BY STREQUAL "case" AND NOT "${suite}${line}" MATCHES "DISABLED_" AND
         line MATCHES "^  ([^ ]+)$")
    add_one("${suite}${CMAKE_MATCH_1}" "${suite}${CMAKE_MATCH_1}")
  endif()
endforeach()
if(tests STREQUAL "")
  message(FATAL_ERROR "${EXECUTABLE} has no case that matches ${FILTER}")
endif()
file(WRITE "${LIST}" "${tests}")
