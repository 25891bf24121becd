#include "tools/bench/trace.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>

#include "tests/support/emulator.h"

namespace {

bool begins_with(const std::string& text, const std::string& beginning) {
    return text.rfind(beginning, 0) == 0;
}

bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// NAME(ARGUMENTS, of which the last is the duration, as <0.1>.
TracedCall call_in(int process, double begin, const std::string& text) {
    const size_t bracket = text.find('(');
    const size_t duration = text.rfind('<');
    return {process, text.substr(0, bracket),
            bracket == std::string::npos ? "" : text.substr(bracket + 1), begin,
            duration == std::string::npos ? 0 : std::strtod(text.c_str() + duration + 1, nullptr)};
}

class Reader {
  public:
    // PID TIME TEXT
    void take(const std::string& line) {
        std::istringstream fields(line);
        int process = 0;
        double time = 0;
        std::string text;
        if (!(fields >> process >> time >> std::ws) || !std::getline(fields, text)) return;
        if (begins_with(text, "+++"))
            trace.ends[process] = time;
        else if (!begins_with(text, "---"))
            takeCall(process, time, text);
    }

    Trace trace;

  private:
    void takeCall(int process, double time, const std::string& text) {
        const size_t cut = text.rfind(" <unfinished ...>");
        if (cut != std::string::npos) {
            begun[process] = {time, text.substr(0, cut)};
        } else if (begins_with(text, "<... ")) {
            const auto& [begin, start] = begun[process];
            const std::string again = " resumed>";
            const std::string rest = text.substr(text.find(again) + again.size());
            trace.calls.push_back(call_in(process, begin, start + rest));
        } else {
            trace.calls.push_back(call_in(process, time, text));
        }
    }

    std::map<int, std::pair<double, std::string>> begun;
};

// With -D the program itself is the child of whoever starts strace.
std::vector<std::string> traced(const std::vector<std::string>& options,
                                const std::vector<std::string>& command, const std::string& log) {
    std::vector<std::string> arguments{find_program("strace"), "-D", "-f", "-q", "-ttt", "-T", "-e",
                                       "signal=none",          "-o", log};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.emplace_back("--");
    arguments.insert(arguments.end(), command.begin(), command.end());
    return arguments;
}

// How long the server's commands ran, each from its exec to its end.
double time_of_commands(const Trace& trace, double from, const std::string& program) {
    double seconds = 0;
    for (const TracedCall& call : trace.calls) {
        const auto end = trace.ends.find(call.process);
        if (call.name == "execve" && call.begin >= from && end != trace.ends.end() &&
            begins_with(call.arguments, "\"" + program + "\""))
            seconds += end->second - call.begin;
    }
    return seconds;
}

// The first text in quotes among a call's arguments, as strace -xx writes it: \x41 for "A". Empty
// if there is none.
std::string first_text(const TracedCall& call) {
    const std::string& arguments = call.arguments;
    std::string text;
    for (size_t at = arguments.find("\"\\x"); arguments.compare(at + 1, 2, "\\x") == 0; at += 4)
        text += static_cast<char>(std::strtol(arguments.substr(at + 3, 2).c_str(), nullptr, 16));
    return text;
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
            if (!step.empty() && seen.insert(step).second) begun = step;
        }
        return begun;
    }

  private:
    // "--> STEP ..."
    static std::string stepOf(const std::string& row) {
        const std::string arrow = "--> ";
        const size_t at = row.find(arrow);
        if (at == std::string::npos) return "";
        const size_t from = at + arrow.size();
        return row.substr(from, row.find(" ...", from) - from);
    }

    Emulator emulator{24, 80, "xterm-256color"};
    std::set<std::string> seen;
};

}  // namespace

Trace read_trace(std::istream& log) {
    Reader reader;
    std::string line;
    // The last line may not have been written to its end yet.
    while (std::getline(log, line) && !log.eof()) reader.take(line);
    return reader.trace;
}

TracedProgram::TracedProgram(const std::vector<std::string>& options,
                             const std::vector<std::string>& command)
    : program(traced(options, command, log())) {}

Trace TracedProgram::trace() const {
    std::ifstream file(log());
    return read_trace(file);
}

const std::vector<std::string> options_for_writes{"--seccomp-bpf",     "-y", "-s", "0", "-e",
                                                  "trace=write,writev"};

int terminal_writes(const Trace& trace) {
    const auto is_write = [](const TracedCall& call) {
        const bool on_terminal =
            holds(call.arguments, "</dev/pts/") || holds(call.arguments, "</dev/tty>");
        return (call.name == "write" || call.name == "writev") && on_terminal &&
               !holds(call.arguments, ") = -1 ");
    };
    return static_cast<int>(std::count_if(trace.calls.begin(), trace.calls.end(), is_write));
}

OthersTime others_time(const Trace& trace, int wizard, double from, const std::string& server) {
    OthersTime time;
    for (const TracedCall& call : trace.calls) {
        const double seconds =
            std::max(0.0, call.begin + call.seconds - std::max(call.begin, from));
        if (call.process == wizard && call.name == "pselect6")
            time.asleep += seconds;
        else if (call.process == wizard && call.name == "ppoll" &&
                 holds(call.arguments, "<socket:"))
            time.server += seconds;
    }
    time.server += time_of_commands(trace, from, server);
    return time;
}

std::vector<std::pair<std::string, int>> calls_by_step(const Trace& trace, int wizard,
                                                       double from) {
    std::vector<std::pair<std::string, int>> steps{{"opening the progress box", 0}};
    Progress progress;
    for (const TracedCall& call : trace.calls) {
        if (call.process != wizard) continue;
        const std::string begun = call.name == "write" ? progress.show(first_text(call)) : "";
        if (!begun.empty()) steps.emplace_back(begun, 0);
        if (call.begin >= from) ++steps.back().second;
    }
    return steps;
}
