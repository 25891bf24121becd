#include "tests/support/installed_server.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>

#include "tests/support/cli_client.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/screen_text.h"
#include "tests/support/wait_until.h"

namespace {

constexpr const char* log_file = "/var/opt/teluma/run/teluma.log";
constexpr const char* faults_file = "/var/opt/teluma/run/teluma.faults";
constexpr const char* state_file = "/var/opt/teluma/run/teluma.state";
constexpr const char* password_file = "/var/opt/teluma/run/teluma.password";
constexpr int cli_port = 9091;

bool begins_with(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

Lines beginning_with(const Lines& lines, const std::string& start) {
    Lines found;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
                 [&](const std::string& line) { return begins_with(line, start); });
    return found;
}

}  // namespace

void InstalledServer::start() const {
    const CommandResult result = run_command({binary});
    if (result.status != exited(0))
        stop_test(Caller::here(), "the server does not start: " + result.err);
}

void InstalledServer::faults(const std::string& rules) const {
    write_file(faults_file, rules);
}

void InstalledServer::save(const std::string& state) const {
    write_file(state_file, state);
}

void InstalledServer::replaceBy(const std::string& script) const {
    unlink(binary);
    write_file(binary, "#!/bin/sh\n" + script, 0755);
}

void InstalledServer::wrapBy(const std::string& script) const {
    const std::string real = std::string(binary) + ".real";
    checked(rename(binary, real.c_str()), "rename");
    replaceBy(script);
}

void InstalledServer::runAsItsUser() const {
    run_command({"chown", "-R", "teluma:teluma", "/var/opt/teluma"});
    wrapBy("exec setpriv --reuid teluma --regid teluma --clear-groups -- $0.real \"$@\"\n");
}

pid_t InstalledServer::pid() const {
    return exists(pid_file) ? std::atoi(read_file(pid_file).c_str()) : 0;
}

pid_t InstalledServer::lastStarted() const {
    const Lines processes =
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

Lines InstalledServer::commands() const {
    Lines lines = log();
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const std::string& line) { return begins_with(line, "# "); }),
                lines.end());
    return lines;
}

Lines InstalledServer::commandsBehind(const std::string& command) const {
    const Lines all = commands();
    const auto last = std::find(all.rbegin(), all.rend(), command);
    return last == all.rend() ? Lines() : Lines(last.base(), all.end());
}

Lines InstalledServer::saved(const std::string& words) const {
    return beginning_with(split_lines(read_file(state_file)), words);
}

std::string InstalledServer::password() const {
    return read_file(password_file);
}

Lines InstalledServer::log() const {
    return exists(log_file) ? split_lines(read_file(log_file)) : Lines();
}

void InstalledServer::waitForLog(const std::string& line) const {
    wait_until(
        [&] {
            const Lines lines = log();
            return std::find(lines.begin(), lines.end(), line) != lines.end();
        },
        "the server's log held: " + line);
}

std::string InstalledServer::stateAfterRestart(const std::string& password) const {
    waitForEnd();
    start();
    unlink(state_file);
    CliClient client(cli_port);
    client.logIn(password);
    client.say("save config");
    return read_file(state_file);
}

Lines records(const std::string& text, const std::string& start) {
    Lines values = beginning_with(split_lines(text), start + " ");
    for (std::string& value : values)
        value.erase(0, start.size() + 1);
    return values;
}
