# cmake -D LAYOUT=NAME -D CURSES=FILE -D DIRECTORY=... -D CXX=... -D GENERATOR=... -P THIS: makes a
# tree with headers and libraries of curses where a system has them, and fails unless the search in
# FILE finds them there.

cmake_minimum_required(VERSION 3.16)

# The folders of the headers and the libraries, and the names of the libraries in the order of
# linking. Another curses stands beside them.
set(layout_debian usr/include usr/lib panelw ncursesw tinfo)
set(layout_freebsd usr/include usr/lib panelw ncursesw tinfow)
set(layout_openbsd usr/include usr/lib panelw ncursesw)
set(layout_openbsd_before_7.7 usr/include usr/lib panel ncursesw)
set(layout_pkgsrc usr/pkg/include/ncurses usr/pkg/lib panel ncurses)
set(layout_pkgsrc_before_2024 usr/pkg/include/ncursesw usr/pkg/lib panelw ncursesw)
set(layout_illumos usr/include/ncurses usr/gnu/lib panelw ncursesw)
set(layout_named opt/own/include opt/own/lib panel ncurses)
# These have none that will do.
set(layout_narrow usr/include usr/lib panel ncurses)
set(layout_foreign_panel_library usr/pkg/include/ncurses usr/pkg/lib ncurses)
set(layout_foreign_panel_header usr/pkg/include/ncurses usr/pkg/lib panel ncurses)

set(sources ${CMAKE_CURRENT_LIST_DIR}/curses_layouts)
set(tree ${DIRECTORY}/${LAYOUT})
set(libraries ${layout_${LAYOUT}})
list(POP_FRONT libraries headers folder)

# make_library(PATH FUNCTION...): a shared library in the tree with these functions.
function(make_library path)
  get_filename_component(name ${path} NAME)
  set(source "")
  foreach(function ${ARGN})
    string(APPEND source "extern \"C\" long ${function}() { return 0; }\n")
  endforeach()
  file(WRITE ${tree}/${path}.cpp "${source}")
  execute_process(COMMAND ${CXX} -shared -fPIC -Wl,-soname,${name} -o ${tree}/${path} ${tree}/${path}.cpp
                  RESULT_VARIABLE status)
  if(status)
    message(FATAL_ERROR "No ${path}")
  endif()
endfunction()

function(make_libraries)
  set(ncurses_functions get_wch key_defined)
  if(LAYOUT MATCHES narrow)
    set(ncurses_functions key_defined)
  elseif(libraries MATCHES tinfo)
    set(ncurses_functions get_wch)
  endif()
  foreach(library ${libraries})
    set(functions ${ncurses_functions})
    if(library MATCHES panel)
      set(functions panel_above)
    elseif(library MATCHES tinfo)
      set(functions key_defined)
    endif()
    make_library(${folder}/lib${library}.so ${functions})
  endforeach()
endfunction()

function(make_other_curses)
  file(WRITE ${tree}/usr/include/curses.h "#error another curses\n")
  file(COPY ${sources}/panel.h DESTINATION ${tree}/usr/include)
  file(COPY ${sources}/panel.h DESTINATION ${tree}/usr/pkg/include)
  file(WRITE ${tree}/usr/lib/libcurses.so "another curses\n")
  make_library(usr/lib/libpanel.so panel_above)
  # The narrow one, unless the wide one has its name.
  file(WRITE ${tree}/${folder}/libncurses.so "narrow curses\n")
  if(LAYOUT STREQUAL "named")
    file(WRITE ${tree}/usr/lib/libncursesw.so "another version\n")
  endif()
endfunction()

function(make_headers)
  configure_file(${sources}/curses.h ${tree}/${headers}/curses.h COPYONLY)
  configure_file(${sources}/curses.h ${tree}/${headers}/ncurses.h COPYONLY)
  if(NOT LAYOUT STREQUAL "foreign_panel_header")
    configure_file(${sources}/panel.h ${tree}/${headers}/panel.h COPYONLY)
  endif()
endfunction()

# run(COMMAND...): sets `failed` to what the command says, if it fails.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE text ERROR_VARIABLE text)
  if(NOT status EQUAL 0)
    set(failed "${failed}${status}: ${text}" PARENT_SCOPE)
  endif()
endfunction()

file(REMOVE_RECURSE ${tree})
make_other_curses()
make_headers()
make_libraries()
set(build ${tree}/build)
run(${CMAKE_COMMAND} -S ${sources} -B ${build} -G ${GENERATOR} -D CMAKE_CXX_COMPILER=${CXX}
    "-DCMAKE_CXX_FLAGS=-isystem ${tree}/usr/include" -D CURSES=${CURSES}
    -D CMAKE_INSTALL_PREFIX=${tree} -D CMAKE_PREFIX_PATH=/opt/own -D CMAKE_FIND_ROOT_PATH=${tree}
    -D CMAKE_FIND_ROOT_PATH_MODE_INCLUDE=ONLY -D CMAKE_FIND_ROOT_PATH_MODE_LIBRARY=ONLY)
if(LAYOUT MATCHES "narrow|foreign")
  if(NOT failed MATCHES "libncurses-dev")
    message(FATAL_ERROR "This was taken for wide curses with panels: ${failed}")
  endif()
  return()
endif()
if(NOT failed)
  # What is installed must find the libraries as well.
  run(${CMAKE_COMMAND} --build ${build} --target install)
  run(${tree}/bin/program)
endif()
if(failed)
  message(FATAL_ERROR "${failed}")
endif()

set(expected ${tree}/${headers})
foreach(library ${libraries})
  list(APPEND expected ${tree}/${folder}/lib${library}.so)
endforeach()
file(READ ${build}/found found)
if(NOT found STREQUAL expected)
  message(FATAL_ERROR "Found ${found}, expected ${expected}")
endif()
