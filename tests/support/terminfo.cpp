#include "tests/support/terminfo.h"

#include <curses.h>
#include <term.h>
#include <unistd.h>

bool terminal_known(const std::string& term) {
    int reason = 0;
    if (setupterm(term.c_str(), STDERR_FILENO, &reason) != OK)
        return false;
    del_curterm(cur_term);
    return true;
}
