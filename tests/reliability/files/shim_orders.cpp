#include "tests/reliability/files/shim_orders.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sstream>

namespace {

// The library's own calls go straight to the kernel: by their names they would come back here.

// All of the log; empty where there is none.
std::string logged_calls() {
    const long descriptor = syscall(SYS_openat, AT_FDCWD, call_log, O_RDONLY | O_CLOEXEC);
    std::string content;
    char block[4096];
    for (long count = 0; (count = syscall(SYS_read, descriptor, block, sizeof(block))) > 0;)
        content.append(block, static_cast<size_t>(count));
    syscall(SYS_close, descriptor);
    return content;
}

void log_call(const std::string& line) {
    const long descriptor =
        syscall(SYS_openat, AT_FDCWD, call_log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    syscall(SYS_write, descriptor, line.data(), line.size());
    syscall(SYS_close, descriptor);
}

// How often `line` stands in the log, or begins a line of it.
int count_lines(const std::string& log, const std::string& line) {
    int count = 0;
    for (size_t at = 0; at < log.size(); at = log.find('\n', at) + 1)
        count += log.compare(at, line.size(), line) == 0 ? 1 : 0;
    return count;
}

std::istringstream words_of(const char* variable) {
    const char* text = getenv(variable);
    return std::istringstream(text == nullptr ? "" : text);
}

constexpr const char* wizard_variable = "TELUMA_SHIM_WIZARD";

pid_t wizard_pid() {
    pid_t process = 0;
    words_of(wizard_variable) >> process;
    return process;
}

bool is_wizard() { return std::string(program_invocation_short_name) == "teluma-wizard"; }

__attribute__((constructor)) void introduce_wizard() {
    if (is_wizard()) setenv(wizard_variable, std::to_string(getpid()).c_str(), 1);
}

// Whether a call fails by the orders.
bool is_to_fail(const std::string& call, const std::string& log) {
    std::istringstream rule = words_of(fault_variable);
    int count = 0;
    std::string wanted;
    rule >> count >> std::ws;
    std::getline(rule, wanted);
    return call == wanted &&
           count_lines(log, "- " + call + "\n") + count_lines(log, "+ " + call + "\n") + 1 == count;
}

// Whom the orders kill before a changing call; empty if nobody.
std::string victim_of(const std::string& log) {
    std::istringstream rule = words_of(kill_variable);
    int count = 0;
    std::string victim;
    rule >> count >> victim;
    return count_lines(log, "+") + 1 == count ? victim : "";
}

// Carries out a killing; returns whether it is to be done half-way through the call.
bool strike(const std::string& victim, Effect effect) {
    if (victim == "wizard")
        kill(wizard_pid(), SIGKILL);
    else if (victim == "child" && !is_wizard())
        kill(getpid(), SIGKILL);
    else if (victim == "all" || (victim == "halfway" && effect != Effect::writes))
        die();
    return victim == "halfway";
}

// The private directory has another name every time.
std::string lasting_name(const std::string& path) {
    constexpr size_t length = sizeof("/tmp/teluma-wizard.XXXXXX") - 1;
    if (path.compare(0, 19, "/tmp/teluma-wizard.") != 0) return path;
    return path.size() > length ? path.substr(length + 1) : "private directory";
}

}  // namespace

Orders meet(const char* call, const std::string& object, Effect effect) {
    const std::string log = logged_calls();
    const std::string line =
        std::string(program_invocation_short_name) + " " + call + " " + lasting_name(object);
    const bool changes = effect != Effect::none;
    log_call((changes ? "+ " : "- ") + line + "\n");
    const bool half_way = changes && strike(victim_of(log), effect);
    const bool fails = is_to_fail(line, log);
    errno = fails ? EIO : errno;
    return {fails, half_way};
}

void die() {
    kill(wizard_pid(), SIGKILL);
    for (;;) kill(getpid(), SIGKILL);
}

std::string name_of(int descriptor) {
    char name[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const long length = syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), name, sizeof(name));
    if (length <= 0) return "";
    // The server may take its pid file away while the wizard reads it; see proc(5).
    const std::string path(name, static_cast<size_t>(length));
    return path.substr(0, path.rfind(" (deleted)"));
}

bool is_watched_process() {
    const std::string name = program_invocation_short_name;
    return is_wizard() || name == "cp" || name == "rm";
}

bool is_watched(const std::string& path) {
    if (!is_watched_process()) return false;
    for (const char* start : {"/var/opt/teluma/", "/opt/teluma/bin/sendmail", "/usr/sbin/sendmail",
                              "/tmp/teluma-wizard.", "temp.cfg"}) {
        if (path.compare(0, std::string(start).size(), start) == 0) return true;
    }
    return false;
}
