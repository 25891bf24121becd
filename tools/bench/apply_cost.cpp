#include "tools/bench/apply_cost.h"

#include <cstdlib>
#include <map>

#include "tests/support/process.h"
#include "tests/support/temp_dir.h"
#include "tools/bench/measured_program.h"
#include "tools/bench/table.h"
#include "tools/bench/trace_log.h"
#include "tools/bench/walk.h"

namespace {

struct ApplyRun {
    double milliseconds;  // from the last key to the "OK" at the end
    std::vector<TracedCall> calls;
    size_t first_call;  // of those after the last key
};

// `traced` are strace's options that choose what it writes down.
ApplyRun run_apply(const std::string& wizard, const std::vector<std::string>& traced) {
    const TempDir directory;
    const std::string log = directory / "calls";
    run_command({"/opt/teluma/bin/teluma"});
    std::vector<std::string> command{"strace", "-f", "-qq", "-T", "-s", "200", "-o", log};
    command.insert(command.end(), traced.begin(), traced.end());
    command.insert(command.end(), {"--", wizard});
    MeasuredProgram program(command);
    walk_to_last_screen(program);
    const size_t before = read_trace(log).size();
    const Burst run = program.typeUntil("\r", "OK");
    return {run.milliseconds, read_trace(log), before};
}

bool calls_function(const TracedCall& call, const std::string& name) {
    return call.text.rfind(name + "(", 0) == 0;
}

// The commands with which the wizard edits files are its own work; the others start the server.
bool is_own_command(const std::string& execution) {
    return execution.find("\"cp ") != std::string::npos ||
           execution.find("\"rm ") != std::string::npos;
}

// Seconds of the run in which the wizard sleeps, or waits for the server's answer or its command.
double waited_seconds(const ApplyRun& run) {
    const int wizard = run.calls.front().process;
    std::map<int, bool> own_command;
    double seconds = 0;
    for (size_t i = run.first_call; i < run.calls.size(); ++i) {
        const TracedCall& call = run.calls[i];
        if (calls_function(call, "execve"))
            own_command.emplace(call.process, is_own_command(call.text));
        if (call.process != wizard)
            continue;
        const int child = calls_function(call, "wait4") ? std::atoi(call.text.c_str() + 6) : 0;
        if (calls_function(call, "pselect6") || (child != 0 && !own_command[child]))
            seconds += call.seconds;
    }
    return seconds;
}

// The text of the progress line that a call begins to show, empty for any other call.
std::string step_begun(const TracedCall& call) {
    const std::string arrow = "--> ";
    const size_t at = call.text.find(arrow);
    if (!calls_function(call, "write") || at == std::string::npos)
        return "";
    const size_t from = at + arrow.size();
    return call.text.substr(from, call.text.find(" ...", from) - from);
}

}  // namespace

void measure_apply_time(const std::string& wizard) {
    const ApplyRun run = run_apply(wizard, {"--seccomp-bpf", "-e", "trace=execve,pselect6,wait4"});
    const double waited = waited_seconds(run) * 1e3;
    print_own("a whole apply run, ms", number(run.milliseconds, 0));
    print_own("the same without sleeps and waits for the server, ms",
              number(run.milliseconds - waited, 0));
}

void count_apply_calls(const std::string& wizard) {
    const ApplyRun run = run_apply(wizard, {});
    std::string step = "opening the progress box";
    int count = 0;
    for (size_t i = run.first_call; i < run.calls.size(); ++i) {
        if (run.calls[i].process != run.calls.front().process)
            continue;
        const std::string next = step_begun(run.calls[i]);
        if (!next.empty()) {
            print_own("system calls, " + step, std::to_string(count));
            step = next;
            count = 0;
        }
        ++count;
    }
    print_own("system calls, " + step, std::to_string(count));
}
