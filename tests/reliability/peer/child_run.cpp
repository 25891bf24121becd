#include "tests/reliability/peer/child_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "apply/apply_sequence.h"
#include "tests/apply/apply_case.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/screen_text.h"
#include "tests/support/wait_until.h"
#include "wizard/abort_wizard.h"
#include "wizard/base/screen_state.h"
#include "wizard/system/signal_gate.h"

namespace {

// In the directory that the sandbox gives each test.
const std::string boxes_file = "boxes";
const std::string states_file = "states";
const std::string written_file = "written";
const std::string printed_file = "printed";

void append(const std::string& path, const std::string& line) {
    std::ofstream(path, std::ios::app) << line << '\n';
}

// The user, in the child process.
class User : public ApplyCase {
  public:
    void applyAll(int times) {
        chooseAll();
        waits.atKey = [&] {
            append(boxes_file, boxed_text(screen.terminal.terminalImage()));
            write_file(written_file, screen.terminal.outputBytes());
            screen.terminal.type("\n");
        };
        for (int run = 0; run < times && screen_state != state_end; ++run) {
            screen_state = state_sendmail;
            apply_configuration();
            append(states_file, std::to_string(screen_state));
        }
    }

  private:
    void TestBody() override {}
};

[[noreturn]] void be_user(int times) {
    static_cast<void>(!std::freopen(printed_file.c_str(), "w", stdout));
    hold_signal(SIGINT, abort_wizard);
    User().applyAll(times);
    std::exit(0);
}

pid_t start_user(int times) {
    for (const std::string& file : {boxes_file, states_file, written_file, printed_file})
        write_file(file, "");
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0)
        be_user(times);
    return child;
}

ExitStatus end_of(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? exited(WEXITSTATUS(status)) : killed_by(WTERMSIG(status));
}

void run_script(const std::string& script) {
    const CommandResult result = run_command({"sh", "-ec", script});
    if (result.status != exited(0))
        stop_test(Caller::here(), script + ": " + result.err);
}

}  // namespace

ChildRuns::ChildRuns() {
    run_script("cp -a /var/opt/teluma/run new_server");
}

ChildRun ChildRuns::apply(const std::string& rules, int times) {
    makeServerNew(rules);
    ChildRun run{end_of(start_user(times)), split_lines(read_file(boxes_file))};
    for (const std::string& state : split_lines(read_file(states_file)))
        run.states.push_back(std::atoi(state.c_str()));
    run.written = read_file(written_file);
    return run;
}

ExitStatus ChildRuns::interrupted(const std::string& rules,
                                  const std::function<void(pid_t)>& interrupt,
                                  std::string& printed) {
    makeServerNew(rules);
    const pid_t child = start_user(1);
    interrupt(child);
    const ExitStatus status = end_of(child);
    printed = read_file(printed_file);
    return status;
}

void ChildRuns::makeServerNew(const std::string& rules) const {
    const pid_t process = server.lastStarted();
    if (process > 0) {
        kill(process, SIGKILL);
        wait_until([=] { return !process_running(process); }, "the server of the run before ended");
    }
    run_script("rm -rf /var/opt/teluma/run/*; cp -a new_server/. /var/opt/teluma/run");
    server.faults(rules);
}
