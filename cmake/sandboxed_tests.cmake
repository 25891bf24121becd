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

include(${CMAKE_CURRENT_LIST_DIR}/unit_tests.cmake)

function(add_sandboxed_tests target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "FILTER" "OPTIONS;PROPERTIES")
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "add_sandboxed_tests: unexpected ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(NOT arg_FILTER)
    set(arg_FILTER "*")
  endif()

  add_dependencies(${target} standin_server)
  list_tests_after_build(
    ${target} BY case FILTER "${arg_FILTER}"
    LAUNCHER "${PROJECT_SOURCE_DIR}/sandbox/enter" --standin "${PROJECT_BINARY_DIR}/standin"
             --directory /run/scratch ${arg_OPTIONS} --
    PROPERTIES TIMEOUT 120 ${arg_PROPERTIES})
endfunction()
