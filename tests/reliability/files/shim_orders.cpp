#include "tests/reliability/files/shim_orders.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace {

// How often `line` stands in the log, or begins a line of it.
int count_lines(const std::string& log, const std::string& line) {
    int count = 0;
    for (size_t at = 0; at < log.size(); at = log.find('\n', at) + 1)
        count += log.compare(at, line.size(), line) == 0 ? 1 : 0;
    return count;
}

constexpr const char* wizard_variable = "TELUMA_SHIM_WIZARD";

bool is_wizard() { return std::string(program_invocation_short_name) == "teluma-wizard"; }

__attribute__((constructor)) void introduce_wizard() {
    if (is_wizard()) setenv(wizard_variable, std::to_string(getpid()).c_str(), 1);
}

void kill_wizard() {
    const char* pid = getenv(wizard_variable);
    if (pid != nullptr) kill(std::atoi(pid), SIGKILL);
}

// What the environment says: what, the how many-eth time, and the call or who.
struct Order {
    std::string verb;
    int count = 0;
    std::string object;

    Order() {
        const char* text = getenv(order_variable);
        std::istringstream words(text == nullptr ? "" : text);
        words >> verb >> count >> std::ws;
        std::getline(words, object);
    }
};

// Carries out a killing before a call, unless it is one in the middle of it.
void strike(const std::string& victim, bool half_way) {
    if (victim == "wizard")
        kill_wizard();
    else if (victim == "child" && !is_wizard())
        kill(getpid(), SIGKILL);
    else if (victim == "all" || (victim == "halfway" && !half_way))
        die();
}

// The private directory has another name every time.
std::string lasting_name(const std::string& path) {
    constexpr size_t length = sizeof("/run/teluma-wizard.XXXXXX") - 1;
    if (path.compare(0, 19, "/run/teluma-wizard.") != 0) return path;
    return path.size() > length ? path.substr(length + 1) : "private directory";
}

}  // namespace

// The calls by which this reads and writes come back here, and go on: the log is not watched.
Course meet(const std::string& call, const std::string& object, bool changes) {
    std::ifstream file(call_log);
    const std::string log{std::istreambuf_iterator<char>(file), {}};
    const std::string line =
        std::string(program_invocation_short_name) + " " + call + " " + lasting_name(object);
    std::ofstream(call_log, std::ios::app) << (changes ? "+ " : "- ") << line << "\n";
    const Order order;
    if (changes && order.verb == "kill" && count_lines(log, "+") + 1 == order.count) {
        const bool half_way = order.object == "halfway" && call == "write";
        strike(order.object, half_way);
        return half_way ? Course::half_way : Course::as_ever;
    }
    const int times = count_lines(log, "- " + line + "\n") + count_lines(log, "+ " + line + "\n");
    if (order.verb != "fail" || order.object != line || times + 1 != order.count)
        return Course::as_ever;
    errno = EIO;
    return Course::fails;
}

void die() {
    kill_wizard();
    for (;;) kill(getpid(), SIGKILL);
}

std::string name_of(int descriptor) {
    char name[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const long length = syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), name, sizeof(name));
    // The server may take its pid file away while the wizard reads it; see proc(5).
    const std::string path(name, static_cast<size_t>(std::max(length, 0L)));
    return path.substr(0, path.rfind(" (deleted)"));
}

bool is_watched_process() {
    const std::string name = program_invocation_short_name;
    return is_wizard() || name == "cp" || name == "rm";
}

bool is_watched(const std::string& path) {
    if (!is_watched_process()) return false;
    for (const char* start : {"/var/opt/teluma/", "/opt/teluma/bin/sendmail", "/usr/sbin/sendmail",
                              "/run/teluma-wizard.", "temp.cfg"}) {
        if (path.compare(0, std::string(start).size(), start) == 0) return true;
    }
    return false;
}
