#include <curses.h>
#include <sys/ioctl.h>

#include <cstdlib>

#include "ui/terminal/terminal_record.h"

namespace {

constexpr int most_cells = 4096;

// The lines or columns that the environment prescribes; 0 for none.
int prescribed(const char* variable) {
    const char* text = std::getenv(variable);
    char* end = nullptr;
    const long value = text != nullptr ? std::strtol(text, &end, 10) : 0;
    return value > 0 && value <= most_cells && *end == '\0' ? static_cast<int>(value) : 0;
}

// The same, or else what the terminal tells; 0 where nobody tells.
int size_of(const char* variable, int told) {
    const int wanted = prescribed(variable);
    return wanted != 0 || told > most_cells ? wanted : told;
}

winsize told_size() {
    winsize size{};
    ioctl(size_terminal(), TIOCGWINSZ, &size);
    return size;
}

}  // namespace

void take_size() {
    const winsize told = told_size();
    const int rows = size_of("LINES", told.ws_row);
    const int cols = size_of("COLUMNS", told.ws_col);
    if (is_term_resized(rows, cols))
        resizeterm(rows, cols);
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
