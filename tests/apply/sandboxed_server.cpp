#include "tests/apply/sandboxed_server.h"

#include <algorithm>
#include <cstdlib>

#include "standin/run_paths.h"
#include "standin/text.h"
#include "tests/support/files.h"
#include "tests/support/process.h"

namespace {

const standin::RunPaths& paths() {
    static const standin::RunPaths run_paths = standin::run_paths("/var/opt/teluma/run");
    return run_paths;
}

Lines beginning_with(const Lines& lines, const std::string& start) {
    Lines found;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
                 [&](const std::string& line) { return standin::begins_with(line, start); });
    return found;
}

}  // namespace

void SandboxedServer::start() const {
    const CommandResult result = run_command({binary});
    if (result.status != exited(0))
        stop_test(Caller::here(), "the server does not start: " + result.err);
}

void SandboxedServer::faults(const std::string& rules) const {
    write_file(paths().faults, rules);
}

Lines SandboxedServer::commands() const {
    Lines lines = log();
    lines.erase(
        std::remove_if(lines.begin(), lines.end(),
                       [](const std::string& line) { return standin::begins_with(line, "# "); }),
        lines.end());
    return lines;
}

Lines SandboxedServer::commandsBehind(const std::string& command) const {
    const Lines all = commands();
    const auto last = std::find(all.rbegin(), all.rend(), command);
    return last == all.rend() ? Lines() : Lines(last.base(), all.end());
}

Lines SandboxedServer::saved(const std::string& words) const {
    return beginning_with(standin::split_lines(read_file(paths().state)), words);
}

std::string SandboxedServer::password() const {
    return read_file(paths().password);
}

pid_t SandboxedServer::process() const {
    const std::string note = "# started, process ";
    const Lines started = beginning_with(log(), note);
    return started.empty() ? 0 : std::atoi(started.back().c_str() + note.size());
}

Lines SandboxedServer::log() const {
    return exists(paths().log) ? standin::split_lines(read_file(paths().log)) : Lines();
}
