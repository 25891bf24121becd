#include "tools/bench/apply_trace.h"

#include <algorithm>
#include <map>
#include <set>

#include "tests/support/emulator.h"

namespace {

bool begins_with(const std::string& text, const std::string& beginning) {
    return text.rfind(beginning, 0) == 0;
}

double seconds_since(const TracedCall& call, double from) {
    return std::max(0.0, call.begin + call.seconds - std::max(call.begin, from));
}

// How long the server's commands ran, each from its exec to its end.
double time_of_commands(const Trace& trace, double from, const std::string& program) {
    std::map<int, double> begun;
    for (const TracedCall& call : trace.calls) {
        if (call.name == "execve" && call.begin >= from &&
            begins_with(call.arguments, "\"" + program + "\""))
            begun.emplace(call.process, call.begin);
    }
    double seconds = 0;
    for (const auto& [process, begin] : begun) {
        const auto end = trace.ends.find(process);
        if (end != trace.ends.end())
            seconds += end->second - begin;
    }
    return seconds;
}

// The screen of a terminal that is shown what a process writes, and the lines of progress that have
// ever stood there.
class Progress {
  public:
    // The name of the step that begins with a write, empty if none does.
    std::string show(std::string bytes) {
        // As the terminal's driver passes it on.
        for (size_t at = 0; (at = bytes.find('\n', at)) != std::string::npos; at += 2)
            bytes.insert(at, "\r");
        emulator.feed(bytes);
        const ScreenImage screen = emulator.image();
        std::string begun;
        for (int row = 0; row < screen.rows(); ++row) {
            const std::string step = stepOf(screen.rowText(row));
            if (!step.empty() && seen.insert(step).second)
                begun = step;
        }
        return begun;
    }

  private:
    // "--> STEP ..."
    static std::string stepOf(const std::string& row) {
        const std::string arrow = "--> ";
        const size_t at = row.find(arrow);
        if (at == std::string::npos)
            return "";
        const size_t from = at + arrow.size();
        return row.substr(from, row.find(" ...", from) - from);
    }

    Emulator emulator{24, 80, "xterm-256color"};
    std::set<std::string> seen;
};

}  // namespace

OthersTime others_time(const Trace& trace, int wizard, double from, const std::string& server) {
    OthersTime time;
    for (const TracedCall& call : trace.calls) {
        if (call.process != wizard)
            continue;
        if (call.name == "pselect6")
            time.asleep += seconds_since(call, from);
        else if (call.name == "ppoll" && call.arguments.find("<socket:") != std::string::npos)
            time.server += seconds_since(call, from);
    }
    time.server += time_of_commands(trace, from, server);
    return time;
}

std::vector<std::pair<std::string, int>> calls_by_step(const Trace& trace, int wizard,
                                                       double from) {
    std::vector<std::pair<std::string, int>> steps{{"opening the progress box", 0}};
    Progress progress;
    for (const TracedCall& call : trace.calls) {
        if (call.process != wizard)
            continue;
        const std::string begun = call.name == "write" ? progress.show(first_text(call)) : "";
        if (!begun.empty())
            steps.emplace_back(begun, 0);
        if (call.begin >= from)
            ++steps.back().second;
    }
    return steps;
}
