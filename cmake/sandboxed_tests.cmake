# add_sandboxed_tests(TARGET [FILTER PATTERN] [OPTIONS OPTION...] [PROPERTIES NAME VALUE...])
#
# Makes every GoogleTest case of TARGET, or every case that the GoogleTest filter PATTERN selects, a
# CTest test that runs alone in a sandbox of its own, as the superuser of that sandbox. A case may
# look at /opt, /var/opt, /etc and /usr/sbin, change them, bind any port, and needs to undo nothing.
# It starts in /run/scratch, an empty directory of the sandbox.
#
# The stand-in server is installed (not started) in each. OPTIONS are further options of
# sandbox/enter. PROPERTIES are CTest test properties, TIMEOUT and LABELS for example; a case ends
# after 120 seconds unless TIMEOUT says otherwise. A case that skips itself counts as skipped.
#
# Call it in the folder that defines TARGET; several calls with disjoint patterns give the cases of
# one target different sandboxes. The cases are listed outside the sandbox after each build of
# TARGET, so that the tree also builds where no sandbox can be made.

function(add_sandboxed_tests target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "FILTER" "OPTIONS;PROPERTIES")
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "add_sandboxed_tests: unexpected ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(NOT arg_FILTER)
    set(arg_FILTER "*")
  endif()

  get_property(calls TARGET ${target} PROPERTY SANDBOXED_TEST_CALLS)
  if(NOT calls)
    set(calls 0)
  endif()
  math(EXPR calls "${calls} + 1")
  set_property(TARGET ${target} PROPERTY SANDBOXED_TEST_CALLS ${calls})
  set(list "${CMAKE_CURRENT_BINARY_DIR}/${target}_sandboxed_${calls}.cmake")

  set(launcher "${PROJECT_SOURCE_DIR}/sandbox/enter" --standin "${PROJECT_BINARY_DIR}/standin"
               --directory /run/scratch ${arg_OPTIONS} --)
  add_dependencies(${target} standin_server)
  add_custom_command(
    TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND} "-DEXECUTABLE=$<TARGET_FILE:${target}>" "-DFILTER=${arg_FILTER}"
            "-DLAUNCHER=${launcher}" "-DPROPERTIES=TIMEOUT;120;${arg_PROPERTIES}" "-DLIST=${list}"
            -P "${PROJECT_SOURCE_DIR}/cmake/list_sandboxed_tests.cmake"
    BYPRODUCTS "${list}"
    VERBATIM)

  # A target that was never built shows up as one failing test instead of as no tests.
  set(include_file "${CMAKE_CURRENT_BINARY_DIR}/${target}_sandboxed_${calls}_include.cmake")
  file(WRITE "${include_file}"
       "if(EXISTS [==[${list}]==])\n"
       "  include([==[${list}]==])\n"
       "else()\n"
       "  add_test(${target}_NOT_BUILT ${target}_NOT_BUILT)\n"
       "endif()\n")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${include_file}")
endfunction()
