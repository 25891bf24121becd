// A wizard that is the first process of a container: the kernel lets no signal end it that takes
// its default course.

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "tests/e2e/endings.h"
#include "tests/support/files.h"

namespace {

// The wizard that unshare(1) has started and waits for.
pid_t child_of(pid_t process) {
    const std::string name = std::to_string(process);
    return std::stoi(read_file("/proc/" + name + "/task/" + name + "/children"));
}

TEST(FirstProcess, ends_of_what_would_crash_another_and_leaves_the_terminal_usable) {
    for (const int signal : {SIGQUIT, SIGUSR1}) {
        WizardRun wizard({"unshare", "--pid", "--fork", "--kill-child", WIZARD_PROGRAM});
        wizard.waitForText(title_of(Stop::password));
        const pid_t process = child_of(wizard.pid());
        const std::string directory = link_target("/proc/" + std::to_string(process) + "/cwd");
        ASSERT_NE(directory.find("/teluma-wizard."), std::string::npos);
        kill(process, signal);
        EXPECT_TRUE(ends_with(wizard, exited(128 + signal), "")) << signal;
        std::filesystem::remove_all(directory);
    }
}

}  // namespace
