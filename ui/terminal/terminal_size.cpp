#include "ui/terminal/terminal_size.h"

#include <curses.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <cstdlib>
#include <string>

#include "ui/terminal/terminals.h"

namespace {

constexpr int most_cells = 4096;

// The lines or columns that the environment prescribes; 0 for none.
int prescribed(const char* variable) {
    const char* text = std::getenv(variable);
    if (text == nullptr)
        return 0;
    char* end = nullptr;
    const long value = std::strtol(text, &end, 10);
    return *end == '\0' && value > 0 && value <= most_cells ? static_cast<int>(value) : 0;
}

winsize told_size() {
    winsize size{};
    ioctl(screen_terminal(), TIOCGWINSZ, &size);
    return size;
}

int size_of(const char* variable, int told) {
    const int wanted = prescribed(variable);
    if (wanted != 0)
        return wanted;
    return told <= most_cells ? told : 0;
}

}  // namespace

TerminalSize terminal_size() {
    const winsize told = told_size();
    return {size_of("LINES", told.ws_row), size_of("COLUMNS", told.ws_col)};
}

SizeGuard::SizeGuard() {
    const winsize told = told_size();
    const bool is_open = stdscr != nullptr;
    guard("LINES", told.ws_row, is_open ? getmaxy(stdscr) : 24);
    guard("COLUMNS", told.ws_col, is_open ? getmaxx(stdscr) : 80);
}

SizeGuard::~SizeGuard() {
    for (const char* variable : standing_in)
        unsetenv(variable);
}

void SizeGuard::guard(const char* variable, int told, int present) {
    if (prescribed(variable) != 0)
        return;
    unsetenv(variable);
    if (told <= most_cells)
        return;
    setenv(variable, std::to_string(present).c_str(), 1);
    standing_in.push_back(variable);
}
