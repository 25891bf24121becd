#include "tests/support/terminal_session.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

namespace {

/// What the two processes need. They are forked from one that may have threads: until exec they may
/// call nothing but async-signal-safe functions.
struct Prepared {
    char** arguments;
    char** environment;
    const char* directory;
    int terminal;
    int report;       // gets the program's pid, later its wait status
    int start_error;  // gets errno when the program cannot be run; closed by exec
};

void reset_signals() {
    for (int number = 1; number < NSIG; ++number) std::signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

void report_value(int descriptor, int value) {
    while (write(descriptor, &value, sizeof value) < 0 && errno == EINTR) continue;
}

[[noreturn]] void run_program(const Prepared& prepared) {
    setpgid(0, 0);
    // Taking the foreground from the background is allowed only while SIGTTOU is ignored, as the
    // leader does.
    tcsetpgrp(prepared.terminal, getpid());
    reset_signals();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(prepared.terminal, standard);
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    if (chdir(prepared.directory) == 0)
        execvpe(prepared.arguments[0], prepared.arguments, prepared.environment);
    report_value(prepared.start_error, errno);
    _exit(127);
}

volatile std::sig_atomic_t program_group = 0;

// When the terminal hangs up the kernel tells the leader of the session only, and a shell passes it
// on to its jobs.
void pass_on_hang_up(int) {
    if (program_group > 0) kill(-program_group, SIGHUP);
}

[[noreturn]] void lead_session(const Prepared& prepared) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setsid();
    ioctl(prepared.terminal, TIOCSCTTY, 0);
    std::signal(SIGHUP, pass_on_hang_up);
    std::signal(SIGTTOU, SIG_IGN);
    const pid_t program = fork();
    if (program == 0) run_program(prepared);
    program_group = program;
    // What the test closes, its side of the terminal above all, must not stay open here.
    dup2(prepared.report, STDIN_FILENO);
    close_range(STDIN_FILENO + 1, ~0U, 0);
    report_value(STDIN_FILENO, program);
    int wait_status = 0;
    while (waitpid(program, &wait_status, 0) < 0 && errno == EINTR) continue;
    report_value(STDIN_FILENO, wait_status);
    for (;;) pause();
}

std::optional<int> read_value(int descriptor) {
    int value = 0;
    ssize_t length;
    while ((length = read(descriptor, &value, sizeof value)) < 0 && errno == EINTR) continue;
    if (length != sizeof value) return std::nullopt;
    return value;
}

}  // namespace

TerminalSession::TerminalSession(const Descriptor& terminal, SessionCommand command) {
    Pipe reports = make_pipe();
    Pipe start_errors = make_pipe();
    std::vector<char*> arguments = exec_array(command.arguments);
    std::vector<char*> environment = exec_array(command.environment);
    const Prepared prepared{arguments.data(),
                            environment.data(),
                            command.directory.empty() ? "." : command.directory.c_str(),
                            terminal.get(),
                            reports.write_end.get(),
                            start_errors.write_end.get()};
    leader.pid = checked(fork(), "fork");
    if (leader.pid == 0) lead_session(prepared);
    reports.write_end.close();
    start_errors.write_end.close();
    report = std::move(reports.read_end);
    programPid = read_value(report.get()).value_or(-1);
    const std::optional<int> error = read_value(start_errors.read_end.get());
    if (programPid < 0 || error) {
        throw std::system_error(error.value_or(EAGAIN), std::generic_category(),
                                "cannot run " + command.arguments[0]);
    }
}

TerminalSession::~TerminalSession() {
    while (!ended()) {
        kill(-programPid, SIGKILL);
        kill(programPid, SIGKILL);
        pollfd waited{report.get(), POLLIN, 0};
        poll(&waited, 1, -1);
    }
}

TerminalSession::Leader::~Leader() {
    if (pid < 0) return;
    kill(pid, SIGKILL);
    while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) continue;
}

std::optional<ExitStatus> TerminalSession::ended() {
    pollfd waited{report.get(), POLLIN, 0};
    if (!status && poll(&waited, 1, 0) > 0)
        status = from_wait_status(read_value(report.get()).value_or(0));
    return status;
}
