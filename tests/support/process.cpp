#include "tests/support/process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <fstream>
#include <ostream>
#include <system_error>

#include "tests/support/descriptor.h"
#include "tests/support/files.h"

ExitStatus exited(int code) { return {code, 0}; }

ExitStatus killed_by(int signal) { return {-1, signal}; }

ExitStatus from_wait_status(int wait_status) {
    return WIFSIGNALED(wait_status) ? killed_by(WTERMSIG(wait_status))
                                    : exited(WEXITSTATUS(wait_status));
}

bool operator==(const ExitStatus& left, const ExitStatus& right) {
    return left.code == right.code && left.signal == right.signal;
}

bool operator!=(const ExitStatus& left, const ExitStatus& right) { return !(left == right); }

std::ostream& operator<<(std::ostream& out, const ExitStatus& status) {
    if (status.signal == 0) return out << "exit status " << status.code;
    return out << "signal " << status.signal << " (" << strsignal(status.signal) << ")";
}

std::vector<std::string> changed_environment(const EnvironmentChanges& changes) {
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        if (changes.count(text.substr(0, text.find('='))) == 0) variables.push_back(text);
    }
    for (const auto& [name, value] : changes) {
        if (value) variables.push_back(name + "=" + *value);
    }
    return variables;
}

std::vector<char*> exec_array(std::vector<std::string>& strings) {
    std::vector<char*> pointers;
    pointers.reserve(strings.size() + 1);
    for (std::string& text : strings) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

namespace {

/// A file in memory for one output of a command, so that nobody has to read while it runs.
Descriptor output_file() {
    Descriptor file(checked(memfd_create("output", MFD_CLOEXEC), "memfd_create"));
    checked(fcntl(file.get(), F_SETFL, O_APPEND), "fcntl");
    return file;
}

std::string content_of(const Descriptor& file) {
    return read_file("/proc/self/fd/" + std::to_string(file.get()));
}

pid_t spawn(std::vector<std::string>& arguments, std::vector<std::string> environment, int out,
            int err) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&files, out, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files, err, STDERR_FILENO);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(
        &attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    pid_t pid = -1;
    const int error = posix_spawnp(&pid, arguments.at(0).c_str(), &files, &attributes,
                                   exec_array(arguments).data(), exec_array(environment).data());
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
    if (error != 0)
        throw std::system_error(error, std::generic_category(), "cannot run " + arguments[0]);
    return pid;
}

}  // namespace

CommandResult run_command(std::vector<std::string> arguments, const EnvironmentChanges& environment,
                          const Caller& caller) {
    const Descriptor out = output_file();
    const Descriptor err = output_file();
    const pid_t pid = spawn(arguments, changed_environment(environment), out.get(), err.get());
    int wait_status = 0;
    for (const Deadline deadline; checked(waitpid(pid, &wait_status, WNOHANG), "waitpid") == 0;) {
        if (deadline.passed()) {
            kill(-pid, SIGKILL);
            waitpid(pid, &wait_status, 0);
            stop_test(caller, "waited in vain for the end of " + arguments[0] +
                                  "; it had written:\n" + content_of(out) + content_of(err));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return {from_wait_status(wait_status), content_of(out), content_of(err)};
}

bool process_running(pid_t pid) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/stat");
    std::string text;
    std::getline(status, text);
    // The state follows the name, which is in brackets and may hold anything.
    const size_t name_end = text.rfind(')');
    return name_end != std::string::npos && text.compare(name_end, 3, ") Z") != 0;
}
