#include "tests/e2e/stop_params.h"

std::vector<Stop> every_stop() {
    std::vector<Stop> stops;
    for (int place = 0; place < stop_count; ++place)
        stops.push_back(stop_at(place));
    return stops;
}

std::vector<Stop> listener_stops() {
    return {Stop::webadmin, Stop::smtp, Stop::pop3, Stop::imap, Stop::webmail};
}

std::string stop_name(const testing::TestParamInfo<Stop>& info) {
    return facts_of(info.param).name;
}

std::vector<std::vector<bool>> every_choice_of_three() {
    std::vector<std::vector<bool>> choices;
    for (unsigned bits = 0; bits < 8; ++bits)
        choices.push_back({(bits & 1U) != 0, (bits & 2U) != 0, (bits & 4U) != 0});
    return choices;
}

std::string choice_name(const std::vector<bool>& ticks, const std::vector<std::string>& names) {
    std::string name;
    for (size_t i = 0; i < ticks.size(); ++i) {
        if (ticks[i])
            name += (name.empty() ? "" : "_and_") + names.at(i);
    }
    return name.empty() ? "none" : name;
}
