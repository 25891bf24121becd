#include "tests/support/process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <system_error>

#include "tests/support/deadline.h"
#include "tests/support/descriptor.h"

namespace {

struct SpawnSettings {
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;

    SpawnSettings(int out, int err) {
        posix_spawn_file_actions_init(&files);
        posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&files, out, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&files, err, STDERR_FILENO);

        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setflags(
            &attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        posix_spawnattr_setpgroup(&attributes, 0);
        posix_spawnattr_setsigmask(&attributes, &none);
        posix_spawnattr_setsigdefault(&attributes, &all);
    }
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&files);
        posix_spawnattr_destroy(&attributes);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
};

pid_t spawn(std::vector<std::string>& arguments, const EnvironmentChanges& changes, int out,
            int err) {
    std::vector<std::string> environment = changed_environment(changes);
    const SpawnSettings settings(out, err);
    pid_t pid = -1;
    const int error =
        posix_spawnp(&pid, arguments.at(0).c_str(), &settings.files, &settings.attributes,
                     exec_array(arguments).data(), exec_array(environment).data());
    if (error != 0)
        throw std::system_error(error, std::generic_category(), "cannot run " + arguments[0]);
    return pid;
}

/// One output of the command. The writing end stays open here as well, so that a command which
/// closes its output early does not make the reading end readable for ever.
struct Output {
    Pipe pipe = make_pipe();
    std::string text;

    Output() { checked(fcntl(pipe.read_end.get(), F_SETFL, O_NONBLOCK), "fcntl"); }

    void readAvailable() {
        char piece[4096];
        ssize_t length;
        while ((length = read(pipe.read_end.get(), piece, sizeof piece)) > 0)
            text.append(piece, static_cast<size_t>(length));
    }
};

/// Readable when the process has ended. The C library's own declaration of pidfd_open(2) cannot be
/// linked from C++ everywhere.
Descriptor open_process(pid_t pid) {
    return Descriptor(checked(static_cast<int>(syscall(SYS_pidfd_open, pid, 0)), "pidfd_open"));
}

/// Reads both outputs until the process has ended; false if it has not by the deadline.
bool read_until_ended(pid_t pid, Output& out, Output& err) {
    const Deadline deadline;
    const Descriptor process = open_process(pid);
    pollfd waited[] = {{out.pipe.read_end.get(), POLLIN, 0},
                       {err.pipe.read_end.get(), POLLIN, 0},
                       {process.get(), POLLIN, 0}};
    while (waited[2].revents == 0 && !deadline.passed()) {
        poll(waited, 3, deadline.millisecondsLeft(1000));
        out.readAvailable();
        err.readAvailable();
    }
    return waited[2].revents != 0;
}

}  // namespace

CommandResult run_command(std::vector<std::string> arguments, const EnvironmentChanges& environment,
                          const Caller& caller) {
    Output out;
    Output err;
    const pid_t pid =
        spawn(arguments, environment, out.pipe.write_end.get(), err.pipe.write_end.get());
    const bool ended = read_until_ended(pid, out, err);
    if (!ended)
        kill(-pid, SIGKILL);
    int wait_status = 0;
    checked(waitpid(pid, &wait_status, 0), "waitpid");
    out.readAvailable();
    err.readAvailable();
    if (!ended) {
        stop_test(caller, "waited in vain for the end of " + arguments[0] + "; it had written:\n" +
                              out.text + err.text);
    }
    return {from_wait_status(wait_status), out.text, err.text};
}

bool process_running(pid_t pid) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/stat");
    std::string text;
    std::getline(status, text);
    // The state follows the name, which is in brackets and may hold anything.
    const size_t name_end = text.rfind(')');
    return name_end != std::string::npos && text.compare(name_end, 3, ") Z") != 0;
}
