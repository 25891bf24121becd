#include "tests/reliability/signals/wizard_signals.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/e2e/endings.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

// The sanitizers would report the crashes that the tests are about, instead of dying of them.
std::string sanitizers_without_crashes() {
    const char* options = std::getenv("ASAN_OPTIONS");
    return (options != nullptr ? std::string(options) : "") +
           ":handle_segv=0:handle_sigbus=0:handle_sigill=0:handle_sigfpe=0:handle_abort=0";
}

}  // namespace

DyingWizard::DyingWizard()
    : WizardRun(EnvironmentChanges{{"ASAN_OPTIONS", sanitizers_without_crashes()}}) {}

DyingWizard::~DyingWizard() {
    std::error_code ignored;
    if (!directory.empty()) std::filesystem::remove_all(directory, ignored);
}

void DyingWizard::rememberDirectory() {
    directory = link_target("/proc/" + std::to_string(pid()) + "/cwd");
    EXPECT_NE(directory.find("/teluma-wizard."), std::string::npos) << directory;
}

void DyingWizard::dieOf(const Death& death) {
    rememberDirectory();
    signal(death.signal);
    if (death.is_crash) {
        EXPECT_TRUE(ends_with(*this, killed_by(death.signal), ""));
    } else {
        EXPECT_TRUE(is_aborted(*this));
        EXPECT_FALSE(exists(directory));
    }
}

void DyingWizard::dieOfHangUp() {
    rememberDirectory();
    hangUp();
    EXPECT_EQ(waitExit(), exited(1));
    EXPECT_FALSE(exists(directory));
}

// The state stands after the name, which is in parentheses.
bool has_stopped(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string line;
    std::getline(file, line);
    return line.find(") T ") != std::string::npos;
}

void stop(WizardRun& wizard) {
    wizard.signal(SIGTSTP);
    wait_until_stopped(wizard);
}

void wait_until_stopped(WizardRun& wizard) {
    const auto stopped = [&wizard] {
        wizard.alternateScreen();  // reads what was drawn: nobody stops who can't draw on
        return has_stopped(wizard.pid()) || !process_running(wizard.pid());
    };
    wait_until(stopped, "the wizard had stopped");
}

void go_on(WizardRun& wizard) { wizard.signal(SIGCONT); }
