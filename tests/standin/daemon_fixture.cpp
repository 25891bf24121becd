#include "tests/standin/daemon_fixture.h"

#include <sys/prctl.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdlib>

namespace {

/// The numbers in `text` that stand after `words`, and a 0 before them.
std::vector<int> numbers(const std::string& text, const std::string& words) {
    std::vector<int> found = {0};
    for (size_t at = 0; (at = text.find(words, at)) != std::string::npos; at += words.size())
        found.push_back(std::atoi(text.c_str() + at + words.size()));
    return found;
}

}  // namespace

DaemonTest::DaemonTest() {
    // Daemons become children of this process, which can so wait for their end.
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    write_file(paths.config, read_file(STANDIN_PACKAGE "/teluma.cfg"));
    configure("webadmin )", "webadmin cli )");
    configure("127.0.0.1:9091", "127.0.0.1:0");
    write_file(paths.password, "secret");
}

void DaemonTest::TearDown() {
    for (const pid_t pid : numbers(log(), "started, process ")) {
        // Only a child that was not waited for can still be meant by this number.
        if (pid != 0 && waitpid(pid, nullptr, WNOHANG) == 0) {
            kill(pid, SIGKILL);
            waitpid(pid, nullptr, 0);
        }
    }
}

CommandResult DaemonTest::run(const std::vector<std::string>& arguments) const {
    std::vector<std::string> command = {STANDIN_SERVER, "-r", directory.path()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run_command(command);
}

void DaemonTest::start() {
    const CommandResult result = run({});
    ASSERT_EQ(result.status, exited(0)) << result.err;
}

ExitStatus DaemonTest::stop() const {
    kill(daemon(), SIGTERM);
    return waitForEnd();
}

ExitStatus DaemonTest::waitForEnd() const {
    int status = 0;
    const pid_t pid = daemon();
    wait_until([&] { return waitpid(pid, &status, WNOHANG) == pid; }, "the daemon has ended");
    return from_wait_status(status);
}

pid_t DaemonTest::daemon() const { return numbers(log(), "started, process ").back(); }

int DaemonTest::port() const { return numbers(log(), "listening at 127.0.0.1:").back(); }

void DaemonTest::configure(const std::string& part, const std::string& replacement) const {
    std::string text = read_file(paths.config);
    write_file(paths.config, text.replace(text.find(part), part.size(), replacement));
}

void DaemonTest::faults(const std::string& rules) const { write_file(paths.faults, rules); }

std::string DaemonTest::log() const { return exists(paths.log) ? read_file(paths.log) : ""; }
