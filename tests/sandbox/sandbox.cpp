#include "tests/sandbox/sandbox.h"

#include <unistd.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>

CommandResult in_sandbox(const std::string& script, const std::vector<std::string>& options,
                         const Caller& caller) {
    std::vector<std::string> command = {sandbox_program};
    command.insert(command.end(), options.begin(), options.end());
    command.insert(command.end(), {"--", "sh", "-c", script});
    return run_command(command, {}, caller);
}

ProcessMark::ProcessMark() {
    static int marks = 0;
    value = std::to_string(getpid()) + "." + std::to_string(++marks);
}

EnvironmentChanges ProcessMark::environment() const { return {{"SANDBOX_TEST_MARK", value}}; }

int ProcessMark::carriers() const {
    const std::string wanted = "SANDBOX_TEST_MARK=" + value + '\0';
    int found = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        if (std::isdigit(static_cast<unsigned char>(entry.path().filename().string()[0])) == 0)
            continue;
        // That of a process that has ended or belongs to somebody else reads as empty.
        std::ifstream file(entry.path() / "environ", std::ios::binary);
        const std::string environment{std::istreambuf_iterator<char>(file), {}};
        found += environment.find(wanted) != std::string::npos ? 1 : 0;
    }
    return found;
}
