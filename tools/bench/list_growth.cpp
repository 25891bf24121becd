#include "tools/bench/list_growth.h"

#include "tools/bench/measured_program.h"
#include "tools/bench/peers.h"
#include "tools/bench/table.h"

namespace {

constexpr int rounds = 15;

std::string describe(double bytes, double milliseconds) {
    return number(bytes, 0) + " bytes, " + number(milliseconds, 2) + " ms";
}

}  // namespace

void measure_list(const std::string& wizard, const std::string& rows) {
    std::vector<double> screen_bytes, screen_times, key_bytes, key_times;
    for (int round = 0; round < rounds; ++round) {
        MeasuredProgram program({wizard}, 60, 100);
        program.type(leave_first_screen);
        program.type("\t\tp\t\r");
        program.type("\t");
        const Burst screen = program.type("\r");
        program.type("\033OB");
        const Burst key = program.type("\033OA");
        screen_bytes.push_back(static_cast<double>(screen.bytes.size()));
        screen_times.push_back(screen.milliseconds);
        key_bytes.push_back(static_cast<double>(key.bytes.size()));
        key_times.push_back(key.milliseconds);
    }
    print_own("drawing the screen with a list of " + rows + " rows",
              describe(median(screen_bytes), median(screen_times)));
    print_own("a cursor key in that list", describe(median(key_bytes), median(key_times)));
}
