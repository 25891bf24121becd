#include "tests/reliability/signals/wizard_signals.h"

#include <csignal>
#include <cstdlib>

#include "tests/e2e/endings.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

// The sanitizers would report the crashes that the tests are about, instead of dying of them.
std::string sanitizers_without_crashes() {
    const char* options = std::getenv("ASAN_OPTIONS");
    return std::string("ASAN_OPTIONS=") + (options != nullptr ? options : "") +
           ":handle_segv=0:handle_sigbus=0:handle_sigill=0:handle_sigfpe=0:handle_abort=0";
}

}  // namespace

bool is_crash(int signal) { return signal != SIGINT && signal != SIGTERM && signal != SIGHUP; }

DyingWizard::DyingWizard() : WizardRun({{"env", sanitizers_without_crashes(), WIZARD_PROGRAM}}) {}

void DyingWizard::dieOf(int number) {
    EXPECT_EQ(private_directories("/run"), 1);
    signal(number);
    const bool crash = is_crash(number);
    EXPECT_TRUE(crash ? ends_with(*this, killed_by(number), "") : is_aborted(*this));
    EXPECT_EQ(private_directories("/run"), crash ? 1 : 0);
}

void DyingWizard::dieOfHangUp() {
    hangUp();
    EXPECT_EQ(waitExit(), exited(1));
    EXPECT_EQ(private_directories("/run"), 0);
}

// The state stands after the name, which is in parentheses.
bool has_stopped(pid_t process) {
    const std::string path = "/proc/" + std::to_string(process) + "/stat";
    return exists(path) && read_file(path).find(") T ") != std::string::npos;
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
