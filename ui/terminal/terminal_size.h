#pragma once

#include <vector>

/// How large the terminal is. More than 4,096 rows or columns no terminal has; curses would take
/// gigabytes for them, or crash. Whoever tells of them, the environment or the terminal, is not
/// heard.

struct TerminalSize {
    int rows;
    int cols;
};

/// The size that LINES and COLUMNS prescribe or else the terminal tells (screen_terminal()). 0
/// where nobody tells.
TerminalSize terminal_size();

/// Stands guard while curses asks for the size by itself, newterm(3X) and, after endwin(3X),
/// refresh(3X): it finds in the environment the size that it has, or 24 by 80, in place of one that
/// no terminal has. Variables that prescribe nothing that can be used are removed for good.
class SizeGuard {
  public:
    SizeGuard();
    ~SizeGuard();
    SizeGuard(const SizeGuard&) = delete;
    SizeGuard& operator=(const SizeGuard&) = delete;

  private:
    void guard(const char* variable, int told, int present);

    std::vector<const char*> standing_in;
};
