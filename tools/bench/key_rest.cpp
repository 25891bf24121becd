#include "tools/bench/key_rest.h"

#include <sys/syscall.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/e2e/key_wait.h"

namespace {

std::string proc_file(pid_t process, const std::string& name) {
    return "/proc/" + std::to_string(process) + "/" + name;
}

bool is_terminal(pid_t process, unsigned long descriptor) {
    std::error_code ignored;
    const std::string path = std::filesystem::read_symlink(
        proc_file(process, "fd/" + std::to_string(descriptor)), ignored);
    return path.rfind("/dev/pts/", 0) == 0 || path == "/dev/tty";
}

// The number of the system call in which a process is, then its arguments, as proc(5) has them in
// `syscall`; nothing while it runs.
std::vector<unsigned long> call_of(pid_t process) {
    std::ifstream file(proc_file(process, "syscall"));
    std::vector<unsigned long> numbers;
    std::string word;
    while (file >> word && word != "running" && word[0] != '-')
        numbers.push_back(std::stoul(word, nullptr, 0));
    return numbers;
}

bool waits_without_end(pid_t process) {
    const std::vector<unsigned long> call = call_of(process);
    if (call.size() < 6)
        return false;
    switch (call[0]) {
        case SYS_read:
            return is_terminal(process, call[1]);
#ifdef SYS_poll
        case SYS_poll:
            return static_cast<int>(call[3]) < 0;
#endif
#ifdef SYS_select
        case SYS_select:
            return call[5] == 0;
#endif
        case SYS_ppoll:
            return call[3] == 0;
        case SYS_pselect6:
            return call[5] == 0;
        default:
            return false;
    }
}

}  // namespace

bool rests_for_key(pid_t program) {
    return waits_without_end(program) && waits_for_key(program);
}
