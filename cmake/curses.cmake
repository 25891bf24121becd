# The wide-character ncurses and its panel library, as the target `curses_panel`.
#
# Systems keep its headers in include/ or a folder below, its libraries with a "w" in their names or
# without, and another curses beside it. So panels are taken from where ncurses is, and a compile
# tells whether it is the wide one.

include(CheckCXXSourceCompiles)

find_path(NCURSES_INCLUDE_DIR NAMES ncurses.h PATH_SUFFIXES ncursesw ncurses)
find_library(NCURSES_LIBRARY NAMES ncursesw ncurses NAMES_PER_DIR PATHS /usr/gnu/lib)
get_filename_component(ncurses_libraries "${NCURSES_LIBRARY}" DIRECTORY)
find_library(PANEL_LIBRARY NAMES panelw panel PATHS "${ncurses_libraries}" NO_DEFAULT_PATH)
# The part of ncurses that reads terminfo, where it is a library of its own.
find_library(TINFO_LIBRARY NAMES tinfow tinfo PATHS "${ncurses_libraries}" NO_DEFAULT_PATH)

# An imported target can be given to a compile that is tried.
add_library(curses_panel INTERFACE IMPORTED)
if(EXISTS "${NCURSES_INCLUDE_DIR}/panel.h" AND PANEL_LIBRARY)
  target_compile_definitions(curses_panel INTERFACE NCURSES_WIDECHAR=1)
  target_include_directories(curses_panel INTERFACE "${NCURSES_INCLUDE_DIR}")
  target_link_libraries(curses_panel INTERFACE "${PANEL_LIBRARY}" "${NCURSES_LIBRARY}")
  if(TINFO_LIBRARY)
    target_link_libraries(curses_panel INTERFACE "${TINFO_LIBRARY}")
  endif()
  set(CMAKE_REQUIRED_LIBRARIES curses_panel)
  check_cxx_source_compiles("#include <curses.h>
    #include <panel.h>
    int main() {
      wint_t key;
      return get_wch(&key) + key_defined(\"\") + (panel_above(nullptr) == nullptr ? 0 : 1);
    }" CURSES_IS_WIDE)
  unset(CMAKE_REQUIRED_LIBRARIES)
endif()
if(NOT CURSES_IS_WIDE)
  # They are looked for anew the next time.
  foreach(found NCURSES_INCLUDE_DIR NCURSES_LIBRARY PANEL_LIBRARY TINFO_LIBRARY CURSES_IS_WIDE)
    unset(${found} CACHE)
  endforeach()
  message(FATAL_ERROR "The wide-character ncurses with its panel library is missing (Debian package "
                      "libncurses-dev), or it has to be named: -DCMAKE_PREFIX_PATH=DIRECTORY")
endif()

# An installed program finds the libraries where they are outside of the system's own folders.
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH TRUE)
