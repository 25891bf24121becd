#include "tests/standin/daemon_fixture.h"

#include <sys/prctl.h>
#include <sys/wait.h>

#include <csignal>
#include <regex>

#include "standin/text.h"
#include "tests/support/files.h"
#include "tests/support/wait_until.h"

namespace {

const char* const configuration = R"(# A server for tests.
services = ( smtpIncoming webadmin cli )
cli = {
	listeners = (
		#address = 0.0.0.0:9091
		address = 127.0.0.1:0
	)
}
webadmin = {
	listeners = (
		address = 127.0.0.1:9000
	)
}
)";

/// The last match of `pattern`'s first group in `text`, as a number.
int last_number(const std::string& text, const std::string& pattern) {
    const std::regex expression(pattern);
    int number = 0;
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at) {
        number = std::stoi((*at)[1]);
    }
    return number;
}

}  // namespace

DaemonTest::DaemonTest() : paths(standin::run_paths(directory.path())) {
    // Daemons become children of this process, which can so wait for their end.
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    ::write_file(paths.config, configuration);
    ::write_file(paths.password, "secret");
}

void DaemonTest::TearDown() {
    const std::regex started("started, process ([0-9]+)");
    const std::string text = log();
    for (std::sregex_iterator at(text.begin(), text.end(), started), end; at != end; ++at) {
        const pid_t pid = std::stoi((*at)[1]);
        // Only a child that was not waited for can still be meant by this number.
        if (waitpid(pid, nullptr, WNOHANG) == 0) {
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

pid_t DaemonTest::daemon() const {
    return last_number(log(), "started, process ([0-9]+)");
}

int DaemonTest::port() const {
    return last_number(log(), "listening at 127.0.0.1:([0-9]+)");
}

void DaemonTest::faults(const std::string& rules) const {
    ::write_file(paths.faults, rules);
}

std::vector<std::string> DaemonTest::commands() const {
    std::vector<std::string> lines;
    for (const std::string& line : standin::split_lines(log())) {
        if (!standin::begins_with(line, "# ")) {
            lines.push_back(line);
        }
    }
    return lines;
}

std::string DaemonTest::log() const {
    return exists(paths.log) ? ::read_file(paths.log) : std::string();
}
