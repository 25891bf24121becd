#include <ifaddrs.h>
#include <sys/socket.h>

#include <stdexcept>

#include "tests/support/descriptor.h"
#include "tools/bench/measured_program.h"
#include "tools/bench/samples.h"
#include "tools/bench/walk.h"
#include "tools/bench/wizard_alone.h"

namespace {

constexpr int cursor_keys = 10;

void sample(const std::string& what, int rows, const Burst& burst) {
    const std::string column = std::to_string(rows);
    print_sample(what + "_bytes", column, static_cast<double>(burst.bytes));
    print_sample(what + "_time", column, burst.milliseconds);
}

// The list has a row for each of the host's addresses, and one for all of them.
int rows_on_this_host() {
    ifaddrs* addresses = nullptr;
    checked(getifaddrs(&addresses), "getifaddrs");
    int rows = 1;
    for (const ifaddrs* entry = addresses; entry != nullptr; entry = entry->ifa_next) {
        if (entry->ifa_addr != nullptr && entry->ifa_addr->sa_family == AF_INET)
            ++rows;
    }
    freeifaddrs(addresses);
    return rows;
}

}  // namespace

void measure_list(const std::string& wizard, int rows, int rounds) {
    if (rows_on_this_host() != rows)
        throw std::runtime_error("the list of interfaces has another number of rows here");
    for (int round = 0; round < rounds; ++round) {
        MeasuredProgram program({wizard}, 60, 100);
        walk(program, Stop::aliases);
        for (int i = 0; i < facts_of(Stop::aliases).next; ++i)
            program.type("\t");
        sample("list_screen", rows, program.type("\r"));
        program.expect(title_of(Stop::webadmin));
        for (int i = 0; i < cursor_keys; ++i)
            sample("list_key", rows, program.type(i % 2 == 0 ? "\033OB" : "\033OA"));
    }
}
