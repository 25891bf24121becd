#include "tools/bench/tracing.h"

#include <fstream>

#include "tools/bench/find_program.h"

namespace {

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

}  // namespace

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
    int writes = 0;
    for (const TracedCall& call : trace.calls) {
        const bool on_terminal = call.arguments.find("</dev/pts/") != std::string::npos ||
                                 call.arguments.find("</dev/tty>") != std::string::npos;
        const bool failed = call.arguments.find(") = -1 ") != std::string::npos;
        if ((call.name == "write" || call.name == "writev") && on_terminal && !failed)
            ++writes;
    }
    return writes;
}
