// Ctrl-C while the answers are applied: in every wait, with the server signalled if its process id
// is known.

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <set>

#include "tests/e2e/apply_decoy.h"
#include "tests/e2e/apply_screen.h"
#include "tests/e2e/apply_test.h"
#include "tests/e2e/apply_wire.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/silent_port.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

class ApplyInterrupt : public ApplyTest {
  protected:
    /// Presses Ctrl-C and expects the wizard to end as it does then.
    void interrupt() {
        wizard.press(Key::ctrl_c);
        EXPECT_TRUE(is_aborted(wizard));
    }
};

struct SilentCommand {
    std::string name;
    std::string rule;
};

std::string as_name(const std::string& command) {
    std::string name;
    for (const char character : command)
        name += std::isalnum(static_cast<unsigned char>(character)) != 0 ? character : '_';
    return name;
}

/// Every different command of the default run, but for the password, and what else the server may
/// be silent at.
std::vector<SilentCommand> silent_commands() {
    std::vector<SilentCommand> commands = {{"greeting", "connect * silent"},
                                           {"password", "password * silent"}};
    const Commands all = run_commands({});
    std::set<std::string> known = {all[0], all[2]};
    for (const std::string& command : all) {
        if (known.insert(command).second)
            commands.push_back({as_name(command), "=\"" + command + "\" 1 silent"});
    }
    return commands;
}

class ApplySilence : public ApplyInterrupt, public testing::WithParamInterface<SilentCommand> {};

TEST_P(ApplySilence, of_the_server_is_ended_by_ctrl_c_and_the_server_too) {
    server.faults(GetParam().rule + "\n");
    wizard.walkToTheEnd(answers);
    server.waitForLog("# fault: " + GetParam().rule);
    interrupt();
    server.waitForEnd();
    EXPECT_EQ(server.pid(), 0);
}

INSTANTIATE_TEST_SUITE_P(At, ApplySilence, testing::ValuesIn(silent_commands()), CaseName());

TEST_F(ApplyInterrupt, ends_the_wait_for_a_pid_file_that_stays) {
    const Decoy decoy;
    write_file(InstalledServer::pid_file, std::to_string(decoy.pid()) + "\n");
    wizard.walkToTheEnd(answers);
    decoy.waitForSignals(1);
    wizard.waitForKey();
    EXPECT_EQ(progress_lines(wizard.image()),
              std::vector<std::string>{running("setting admin password")});
    interrupt();
    decoy.waitForSignals(2);
    EXPECT_TRUE(server.commands().empty());
}

TEST_F(ApplyInterrupt, ends_the_wait_for_a_server_that_does_not_remove_its_pid_file) {
    server.faults("stop * stays\n");
    server.start();
    wizard.walkToTheEnd(answers);
    server.waitForLog("# stopped");
    interrupt();
    EXPECT_TRUE(server.commands().empty());
}

TEST_F(ApplyInterrupt, ends_the_wait_for_the_new_servers_pid_file_and_leaves_that_server_alone) {
    server.faults("start * missing\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("connecting to CLI");
    interrupt();
    EXPECT_TRUE(server.isRunning());
}

TEST_F(ApplyInterrupt, ends_the_wait_before_connecting) {
    wizard.walkToTheEnd(answers);
    wizard.waitForText("connecting to CLI");
    interrupt();
    server.waitForEnd();
}

TEST_F(ApplyInterrupt, ends_the_wait_for_ok) {
    wizard.walkToTheEnd(answers);
    wizard.waitForText(" OK ");
    interrupt();
    server.waitForEnd();
}

TEST_F(ApplyInterrupt, ends_the_wizard_at_the_error_of_a_step) {
    server.faults("\"create domain\" 1 refuse\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("Error!");
    interrupt();
    server.waitForEnd();
}

TEST_F(ApplyInterrupt, ends_the_wizard_at_the_error_of_the_login) {
    server.faults("password * refuse\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("Error!");
    interrupt();
    server.waitForEnd();
}

/// Whether a connection attempt of this host is waiting for its answer, by the kernel's table.
bool somebody_connects() {
    std::ifstream table("/proc/net/tcp");
    std::string line;
    while (std::getline(table, line)) {
        const std::string syn_sent = " 02 ";
        if (line.find(syn_sent) != std::string::npos)
            return true;
    }
    return false;
}

TEST_F(ApplyInterrupt, ends_a_connection_attempt_that_nobody_answers) {
    const Decoy decoy;
    const SilentPort silent(9091);
    server.replaceBy("case $1 in -A) exit; esac\necho " + std::to_string(decoy.pid()) + " >" +
                     InstalledServer::pid_file);
    wizard.walkToTheEnd(answers);
    wait_until(somebody_connects, "the wizard was connecting");
    wizard.waitForKey();
    interrupt();
    decoy.waitForSignals(1);
}

/// The executable in the server's place runs for ever, at the password or at the start.
class ApplyStuckCommand : public ApplyInterrupt {
  protected:
    void waitForCommand() {
        wizard.walkToTheEnd(answers);
        wait_until([] { return exists("/run/scratch/stuck"); }, "the command ran");
        wizard.waitForKey();
    }

    static pid_t commandPid() { return std::stoi(read_file("/run/scratch/stuck")); }

    const std::string stuck =
        "echo $$ >/run/scratch/stuck.new; mv /run/scratch/stuck.new /run/scratch/stuck\n"
        "exec sleep 1000\n";
};

TEST_F(ApplyStuckCommand, that_sets_the_password_is_ended_by_ctrl_c) {
    server.replaceBy(stuck);
    waitForCommand();
    interrupt();
    wait_until([] { return !process_running(commandPid()); }, "the command had ended");
}

TEST_F(ApplyStuckCommand, that_starts_the_server_is_ended_by_ctrl_c) {
    server.replaceBy("case $1 in -A) exit; esac\n" + stuck);
    waitForCommand();
    interrupt();
    wait_until([] { return !process_running(commandPid()); }, "the command had ended");
}

// No process id is known then, so nobody gets a signal from the wizard, its own group included.
TEST_F(ApplyStuckCommand, lives_on_when_the_wizard_alone_is_interrupted) {
    server.replaceBy(stuck);
    waitForCommand();
    wizard.signal(SIGINT);
    EXPECT_TRUE(is_aborted(wizard));
    EXPECT_TRUE(process_running(commandPid()));
}

}  // namespace
