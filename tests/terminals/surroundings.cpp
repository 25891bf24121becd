#include "tests/terminals/surroundings.h"

#include <curses.h>
#include <term.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

std::ostream& operator<<(std::ostream& out, const Surroundings& surroundings) {
    return out << surroundings.term << " in " << surroundings.locale;
}

std::vector<Surroundings> every_surroundings() {
    std::vector<Surroundings> all;
    for (const char* term : {"xterm-256color", "xterm", "linux", "screen-256color", "tmux-256color",
                             "vt220", "putty", "rxvt"}) {
        for (const char* locale : {"C.UTF-8", "C"})
            all.push_back({term, locale});
    }
    return all;
}

std::string surroundings_name(const testing::TestParamInfo<Surroundings>& info) {
    std::string name = info.param.term + (info.param.hasUtf8() ? "_with_utf8" : "_without_utf8");
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

std::string terminfo_text(const std::string& term, const std::string& capability) {
    int reason = 0;
    if (setupterm(term.c_str(), STDERR_FILENO, &reason) != OK)
        throw std::runtime_error("terminfo does not know " + term);
    const char* text = tigetstr(capability.c_str());
    const bool is_text = text != nullptr && text != reinterpret_cast<char*>(-1);
    std::string copy = is_text ? text : "";
    del_curterm(cur_term);
    return copy;
}
