#include "tools/bench/walk.h"

#include <string>

#include "tools/bench/measured_program.h"

namespace {

// Typed on the screen, one key or text at a time, it leads to the next one.
std::vector<std::string> strokes_on(Stop stop) {
    switch (stop) {
        case Stop::password:
            return {"secret", "\t", "secret", "\t", "\r"};
        case Stop::domain:
            return {"\t", "\t", "secret", "\t", "\r"};
        default:
            break;
    }
    std::vector<std::string> strokes(static_cast<size_t>(facts_of(stop).next), "\t");
    strokes.emplace_back("\r");
    return strokes;
}

}  // namespace

size_t walk(MeasuredProgram& wizard, Stop end) {
    size_t bytes = 0;
    for (int place = 0; place < place_of(end); ++place) {
        for (const std::string& stroke : strokes_on(stop_at(place)))
            bytes += wizard.type(stroke).bytes;
        wizard.expect(title_of(stop_at(place + 1)));
    }
    return bytes;
}
