#include <ctime>

#include "tests/support/process.h"
#include "tools/bench/apply_trace.h"
#include "tools/bench/rows.h"
#include "tools/bench/samples.h"
#include "tools/bench/tracing.h"
#include "tools/bench/walk.h"
#include "tools/bench/wizard_alone.h"

namespace {

const std::string server_program = "/opt/teluma/bin/teluma";

struct ApplyRun {
    double seconds;  // from the last key to the button at the end
    double begin;    // of it, since the epoch
    int wizard;      // the process
    Trace trace;
};

double seconds_of_day() {
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

ApplyRun run_apply(const std::string& wizard, const std::vector<std::string>& options) {
    run_command({server_program});
    TracedProgram program(options, {wizard});
    walk(*program, Stop::sendmail);
    const double begin = seconds_of_day();
    const Burst run = program->typeUntil("\r", " OK ");
    return {run.milliseconds / 1e3, begin, program->pid(), program.trace()};
}

}  // namespace

void measure_apply_time(const std::string& wizard) {
    const ApplyRun run =
        run_apply(wizard, {"--seccomp-bpf", "-y", "-e", "trace=execve,ppoll,pselect6,wait4"});
    const OthersTime others = others_time(run.trace, run.wizard, run.begin, server_program);
    print_sample("apply_whole", "wizard", run.seconds * 1e3);
    print_sample("apply_asleep", "wizard", others.asleep * 1e3);
    print_sample("apply_server", "wizard", others.server * 1e3);
    print_sample("apply_own", "wizard", (run.seconds - others.asleep - others.server) * 1e3);
}

void count_apply_calls(const std::string& wizard) {
    // Long enough for all that is written at once.
    const ApplyRun run = run_apply(wizard, {"-xx", "-s", "65536"});
    for (const auto& [step, calls] : calls_by_step(run.trace, run.wizard, run.begin))
        print_sample(calls_row, step, calls);
}
