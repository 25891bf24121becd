#include "tests/e2e/key_wait.h"

#include <fcntl.h>
#include <poll.h>

#include <csignal>
#include <fstream>
#include <map>
#include <string>

#include "tests/support/descriptor.h"

namespace {

std::string proc_file(pid_t process, const char* name) {
    return "/proc/" + std::to_string(process) + "/" + name;
}

using Fields = std::map<std::string, std::string>;

// The lines "NAME:\tVALUE" of a process's status file; none once it has ended.
Fields status_of(pid_t process) {
    std::ifstream file(proc_file(process, "status"));
    Fields fields;
    for (std::string name, value; std::getline(file, name, ':') && std::getline(file, value);)
        fields[name] = value.erase(0, 1);
    return fields;
}

bool holds_signal(const std::string& set, int signal) {
    return ((std::stoull(set, nullptr, 16) >> (signal - 1)) & 1U) != 0;
}

// Signals are held back everywhere but in a wait, their handlers included.
bool sleeps_with_signals_let_in(Fields& status) {
    return status["State"].compare(0, 1, "S") == 0 && !holds_signal(status["SigBlk"], SIGWINCH) &&
           !holds_signal(status["ShdPnd"], SIGWINCH) && !holds_signal(status["ShdPnd"], SIGINT);
}

// The kernel delivers what is on its way from the keyboard before it answers.
bool has_unread_input(pid_t wizard) {
    const Descriptor terminal(
        open(proc_file(wizard, "fd/0").c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC));
    pollfd input{terminal.get(), POLLIN, 0};
    return poll(&input, 1, 0) != 0;
}

}  // namespace

bool waits_for_key(pid_t wizard) {
    Fields before = status_of(wizard);
    if (before.empty() || !sleeps_with_signals_let_in(before) || has_unread_input(wizard))
        return false;
    // The file is not written in one moment. A process that has not run between two readings has
    // slept through both.
    Fields after = status_of(wizard);
    return !after.empty() && sleeps_with_signals_let_in(after) &&
           after["voluntary_ctxt_switches"] == before["voluntary_ctxt_switches"] &&
           after["nonvoluntary_ctxt_switches"] == before["nonvoluntary_ctxt_switches"];
}
