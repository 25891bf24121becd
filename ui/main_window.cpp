#include "ui/main_window.h"

#include "ui/terminal/colours.h"

OnScreen on_screen;

std::unique_ptr<Window> make_frame(int rows, int cols, const char* title) {
    auto frame = std::make_unique<Window>(main_window, centred(screen_rows, rows),
                                          centred(screen_cols, cols), rows, cols);
    frame->setTitle(title, pair_screen);
    frame->setColors(pair_screen, pair_screen, 1);
    frame->create();
    wattron(frame->getCursesWindow(), A_BOLD);
    return frame;
}
