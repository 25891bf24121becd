# The wide-character curses library and its panel library, as the target `curses_panel`.

set(CURSES_NEED_NCURSES TRUE)
set(CURSES_NEED_WIDE TRUE)
find_package(Curses REQUIRED)
find_library(PANEL_LIBRARY NAMES panelw)
find_path(PANEL_INCLUDE_DIR NAMES panel.h HINTS ${CURSES_INCLUDE_DIRS})
if(NOT PANEL_LIBRARY OR NOT PANEL_INCLUDE_DIR)
  message(FATAL_ERROR "The panel library of ncurses is missing (Debian package libncurses-dev)")
endif()

add_library(curses_panel INTERFACE)
target_compile_definitions(curses_panel INTERFACE NCURSES_WIDECHAR=1)
target_include_directories(curses_panel SYSTEM INTERFACE ${CURSES_INCLUDE_DIRS} ${PANEL_INCLUDE_DIR})
target_link_libraries(curses_panel INTERFACE ${PANEL_LIBRARY} ${CURSES_LIBRARIES})
