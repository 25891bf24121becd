#include "tests/e2e/apply_server.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "tests/standin/cli_client.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

constexpr const char* log_file = "/var/opt/teluma/run/teluma.log";
constexpr const char* faults_file = "/var/opt/teluma/run/teluma.faults";
constexpr const char* state_file = "/var/opt/teluma/run/teluma.state";
constexpr int cli_port = 9091;

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

bool begins_with(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

}  // namespace

void InstalledServer::start() {
    const CommandResult result = run_command({binary});
    if (result.status != exited(0))
        stop_test(Caller::here(), "the server does not start: " + result.err);
}

void InstalledServer::faults(const std::string& rules) {
    write_file(faults_file, rules);
}

void InstalledServer::save(const std::string& state) {
    write_file(state_file, state);
}

void InstalledServer::replaceBy(const std::string& script) {
    unlink(binary);
    write_file(binary, "#!/bin/sh\n" + script, 0755);
}

pid_t InstalledServer::pid() const {
    return exists(pid_file) ? std::atoi(read_file(pid_file).c_str()) : 0;
}

pid_t InstalledServer::lastStarted() const {
    const std::vector<std::string> processes =
        records(exists(log_file) ? read_file(log_file) : "", "# started, process");
    return processes.empty() ? 0 : std::atoi(processes.back().c_str());
}

bool InstalledServer::isRunning() const {
    const pid_t process = lastStarted();
    return process != 0 && process_running(process);
}

void InstalledServer::waitForEnd() const {
    wait_until([this] { return !isRunning(); }, "the server has ended");
}

std::vector<std::string> InstalledServer::commands() const {
    std::vector<std::string> lines = log();
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const std::string& line) { return begins_with(line, "# "); }),
                lines.end());
    return lines;
}

std::vector<std::string> InstalledServer::log() const {
    return exists(log_file) ? lines_of(read_file(log_file)) : std::vector<std::string>();
}

void InstalledServer::waitForLog(const std::string& line) {
    wait_until(
        [&] {
            const std::vector<std::string> lines = log();
            return std::find(lines.begin(), lines.end(), line) != lines.end();
        },
        "the server's log held: " + line);
}

std::string InstalledServer::stateAfterRestart(const std::string& password) {
    waitForEnd();
    start();
    unlink(state_file);
    CliClient client(cli_port);
    client.logIn(password);
    client.say("save config");
    return read_file(state_file);
}

std::vector<std::string> records(const std::string& text, const std::string& start) {
    std::vector<std::string> values;
    for (const std::string& line : lines_of(text)) {
        if (begins_with(line, start + " "))
            values.push_back(line.substr(start.size() + 1));
    }
    return values;
}
