#include "tests/terminals/surroundings.h"

#include <algorithm>

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

std::vector<Surroundings> surroundings_with_utf8() {
    std::vector<Surroundings> all = every_surroundings();
    const auto without = [](const Surroundings& surroundings) { return !surroundings.hasUtf8(); };
    all.erase(std::remove_if(all.begin(), all.end(), without), all.end());
    return all;
}

std::string surroundings_name(const testing::TestParamInfo<Surroundings>& info) {
    std::string name = info.param.term + (info.param.hasUtf8() ? "_with_utf8" : "_without_utf8");
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}
