# add_unit_tests(TARGET)
#
# Makes every GoogleTest suite of TARGET a CTest test: the cases of a suite run one after the other
# in one process, so none may leave anything behind. A test ends after 120 seconds.
#
# Call it in the folder that defines TARGET.
function(add_unit_tests target)
  list_tests_after_build(${target} BY suite FILTER "*" PROPERTIES TIMEOUT 120)
endfunction()

# list_tests_after_build(TARGET BY suite|case FILTER PATTERN [LAUNCHER WORD...]
#                        PROPERTIES NAME VALUE...)
#
# Has the tests of TARGET listed after each of its builds; the arguments are those of list_tests.cmake.
function(list_tests_after_build target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "BY;FILTER" "LAUNCHER;PROPERTIES")
  get_property(calls TARGET ${target} PROPERTY TEST_LISTS)
  if(NOT calls)
    set(calls 0)
    # To read GoogleTest's header takes a third of the time of compiling a test.
    target_precompile_headers(${target} REUSE_FROM test_support)
  endif()
  math(EXPR calls "${calls} + 1")
  set_property(TARGET ${target} PROPERTY TEST_LISTS ${calls})
  set(list "${CMAKE_CURRENT_BINARY_DIR}/${target}_list_${calls}.cmake")

  add_custom_command(
    TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND} "-DEXECUTABLE=$<TARGET_FILE:${target}>" "-DBY=${arg_BY}"
            "-DFILTER=${arg_FILTER}" "-DLAUNCHER=${arg_LAUNCHER}" "-DPROPERTIES=${arg_PROPERTIES}"
            "-DLIST=${list}" -P "${PROJECT_SOURCE_DIR}/cmake/list_tests.cmake"
    BYPRODUCTS "${list}"
    VERBATIM)

  # A target that was never built shows up as one failing test instead of as no tests.
  set(include_file "${CMAKE_CURRENT_BINARY_DIR}/${target}_include_${calls}.cmake")
  file(WRITE "${include_file}"
       "if(EXISTS [==[${list}]==])\n"
       "  include([==[${list}]==])\n"
       "else()\n"
       "  add_test(${target}_NOT_BUILT ${target}_NOT_BUILT)\n"
       "endif()\n")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${include_file}")
endfunction()
