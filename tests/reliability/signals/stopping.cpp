#include "tests/reliability/signals/stopping.h"

#include <csignal>
#include <fstream>
#include <string>

#include "tests/support/process.h"
#include "tests/support/wait_until.h"

// The state stands behind the name, which is in parentheses.
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

void go_on(WizardRun& wizard) {
    wizard.signal(SIGCONT);
}
