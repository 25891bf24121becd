#include "tests/support/terminfo.h"

#include <curses.h>
#include <term.h>
#include <unistd.h>

#include <cstdint>
#include <stdexcept>

bool terminal_known(const std::string& term) {
    int reason = 0;
    if (setupterm(term.c_str(), STDERR_FILENO, &reason) != OK)
        return false;
    del_curterm(cur_term);
    return true;
}

std::string terminfo_text(const std::string& term, const std::string& capability) {
    int reason = 0;
    if (setupterm(term.c_str(), STDERR_FILENO, &reason) != OK)
        throw std::runtime_error("terminfo does not know " + term);
    const char* text = tigetstr(capability.c_str());
    // -1 for the name of something that is no text.
    const bool is_text = text != nullptr && reinterpret_cast<std::intptr_t>(text) != -1;
    std::string copy = is_text ? text : "";
    del_curterm(cur_term);
    return copy;
}
