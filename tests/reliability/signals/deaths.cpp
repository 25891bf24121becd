#include "tests/reliability/signals/deaths.h"

#include <cstdlib>
#include <filesystem>

#include "tests/e2e/endings.h"
#include "tests/support/files.h"

namespace {

// The sanitizers would report the crashes that the tests are about, instead of dying of them.
std::string sanitizers_without_crashes() {
    const char* options = std::getenv("ASAN_OPTIONS");
    return std::string("ASAN_OPTIONS=") + (options != nullptr ? options : "") +
           ":handle_segv=0:handle_sigbus=0:handle_sigill=0:handle_sigfpe=0:handle_abort=0";
}

}  // namespace

DyingWizard::DyingWizard()
    : wizard(std::vector<std::string>{"env", sanitizers_without_crashes()}) {}

DyingWizard::~DyingWizard() {
    std::error_code ignored;
    if (!directory.empty())
        std::filesystem::remove_all(directory, ignored);
}

void DyingWizard::rememberDirectory() {
    directory = link_target("/proc/" + std::to_string(wizard.pid()) + "/cwd");
    EXPECT_NE(directory.find("/teluma-wizard."), std::string::npos) << directory;
}

void DyingWizard::dieOf(const Death& death) {
    rememberDirectory();
    wizard.signal(death.signal);
    if (death.is_crash) {
        EXPECT_TRUE(ends_with(wizard, killed_by(death.signal), ""));
    } else {
        EXPECT_TRUE(is_aborted(wizard));
        EXPECT_FALSE(exists(directory));
    }
}

void DyingWizard::dieOfHangUp() {
    rememberDirectory();
    wizard.hangUp();
    EXPECT_EQ(wizard.waitExit(), exited(1));
    EXPECT_FALSE(exists(directory));
}
