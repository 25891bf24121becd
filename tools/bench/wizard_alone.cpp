#include <ifaddrs.h>
#include <sys/socket.h>

#include <ctime>
#include <stdexcept>

#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tools/bench/parts.h"
#include "tools/bench/tables.h"
#include "tools/bench/trace.h"

namespace {

constexpr int cursor_keys = 10;

const std::string server_program = "/opt/teluma/bin/teluma";

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

void print_own(const std::string& row, double value) { print_sample(row, "wizard", value); }

void print_list(const std::string& what, int rows, const Burst& burst) {
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
        if (entry->ifa_addr != nullptr && entry->ifa_addr->sa_family == AF_INET) ++rows;
    }
    freeifaddrs(addresses);
    return rows;
}

struct ApplyRun {
    double seconds;  // from the last key to the button at the end
    double begin;    // of it, since the epoch
    int wizard;      // the process
    Trace trace;
};

ApplyRun run_apply(const std::string& wizard, const std::vector<std::string>& options) {
    run_command({server_program});
    TracedProgram program(options, {wizard});
    walk(*program, Stop::sendmail);
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    const Burst run = program->typeUntil("\r", " OK ");
    return {run.milliseconds / 1e3,
            static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9,
            program->pid(), program.trace()};
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

void measure_size_and_walk(const std::string& wizard) {
    const TempDir directory;
    const std::string stripped = directory / "stripped";
    run_command({"strip", "-o", stripped, wizard});
    print_own("executable", static_cast<double>(file_facts(wizard).size));
    print_own("stripped", static_cast<double>(file_facts(stripped).size));
    MeasuredProgram program({wizard});
    print_own("walk_bytes",
              static_cast<double>(program.firstScreen().bytes + walk(program, Stop::sendmail)));
}

void measure_list(const std::string& wizard, int rows, int rounds) {
    if (rows_on_this_host() != rows)
        throw std::runtime_error("the list of interfaces has another number of rows here");
    for (int round = 0; round < rounds; ++round) {
        MeasuredProgram program({wizard}, 60, 100);
        walk(program, Stop::aliases);
        for (int i = 0; i < facts_of(Stop::aliases).next; ++i) program.type("\t");
        print_list("list_screen", rows, program.type("\r"));
        program.expect(title_of(Stop::webadmin));
        for (int i = 0; i < cursor_keys; ++i)
            print_list("list_key", rows, program.type(i % 2 == 0 ? "\033OB" : "\033OA"));
    }
}

void measure_apply_time(const std::string& wizard) {
    const ApplyRun run =
        run_apply(wizard, {"--seccomp-bpf", "-y", "-e", "trace=execve,ppoll,pselect6,wait4"});
    const OthersTime others = others_time(run.trace, run.wizard, run.begin, server_program);
    print_own("apply_whole", run.seconds * 1e3);
    print_own("apply_asleep", others.asleep * 1e3);
    print_own("apply_server", others.server * 1e3);
    print_own("apply_own", (run.seconds - others.asleep - others.server) * 1e3);
}

void count_apply_calls(const std::string& wizard) {
    // Long enough for all that is written at once.
    const ApplyRun run = run_apply(wizard, {"-xx", "-s", "65536"});
    for (const auto& [step, calls] : calls_by_step(run.trace, run.wizard, run.begin))
        print_sample(calls_row, step, calls);
}
