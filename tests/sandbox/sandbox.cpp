#include "tests/sandbox/sandbox.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

const char mark_name[] = "SANDBOX_TEST_MARK";

// The environment of a process that has ended or belongs to somebody else reads as empty.
std::string environment_of(const std::filesystem::path& process) {
    std::ifstream file(process / "environ", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

std::string sandbox_program() {
    return SANDBOX_PROGRAM;
}

std::string standin_package() {
    return STANDIN_PACKAGE;
}

CommandResult in_sandbox(const std::string& script, const std::vector<std::string>& options,
                         const Caller& caller) {
    std::vector<std::string> command = {sandbox_program()};
    command.insert(command.end(), options.begin(), options.end());
    command.insert(command.end(), {"--", "sh", "-c", script});
    return run_command(command, {}, caller);
}

ProcessMark::ProcessMark() {
    static int marks = 0;
    value = std::to_string(getpid()) + "." + std::to_string(++marks);
}

EnvironmentChanges ProcessMark::environment() const {
    return {{mark_name, value}};
}

std::vector<int> ProcessMark::carriers() const {
    const std::string wanted = std::string(mark_name) + "=" + value + '\0';
    std::vector<int> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const int pid = std::atoi(entry.path().filename().c_str());
        if (pid > 0 && environment_of(entry.path()).find(wanted) != std::string::npos)
            found.push_back(pid);
    }
    return found;
}
