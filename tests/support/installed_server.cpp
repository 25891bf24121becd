#include "tests/support/installed_server.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "tests/support/cli_client.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/screen_text.h"

namespace {

const std::string run_files = "/var/opt/teluma/run/teluma.";
constexpr int cli_port = 9091;

/// The lines that begin with `start`, or those that don't.
Lines chosen(Lines lines, const std::string& start, bool wanted = true) {
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [&](const std::string& line) {
                                   return (line.compare(0, start.size(), start) == 0) != wanted;
                               }),
                lines.end());
    return lines;
}

}  // namespace

Lines records(const std::string& text, const std::string& start) {
    Lines values = chosen(split_lines(text), start + " ");
    for (std::string& value : values) value.erase(0, start.size() + 1);
    return values;
}

void InstalledServer::start() const {
    const CommandResult result = run_command({binary});
    if (result.status != exited(0))
        stop_test(Caller::here(), "the server does not start: " + result.err);
}

void InstalledServer::faults(const std::string& rules) const {
    write_file(run_files + "faults", rules);
}

void InstalledServer::save(const std::string& state) const {
    write_file(run_files + "state", state);
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
    const std::string start = "# started, process ";
    const Lines starts = chosen(log(), start);
    return starts.empty() ? 0 : std::atoi(starts.back().c_str() + start.size());
}

bool InstalledServer::isRunning() const {
    const pid_t process = lastStarted();
    return process != 0 && process_running(process);
}

void InstalledServer::waitForEnd() const {
    wait_until([this] { return !isRunning(); }, "the server has ended");
}

Lines InstalledServer::commands() const { return chosen(log(), "# ", false); }

Lines InstalledServer::saved(const std::string& words) const {
    return chosen(split_lines(read_file(run_files + "state")), words);
}

std::string InstalledServer::password() const { return read_file(run_files + "password"); }

Lines InstalledServer::log() const {
    const std::string path = run_files + "log";
    return exists(path) ? split_lines(read_file(path)) : Lines();
}

void InstalledServer::waitForLog(const std::string& line) const {
    wait_until(
        [&] {
            const Lines lines = log();
            return std::count(lines.begin(), lines.end(), line) > 0;
        },
        "the server's log held: " + line);
}

std::string InstalledServer::stateAfterRestart(const std::string& password) const {
    waitForEnd();
    start();
    unlink((run_files + "state").c_str());
    CliClient client(cli_port);
    client.logIn(password);
    client.say("save config");
    return read_file(run_files + "state");
}
