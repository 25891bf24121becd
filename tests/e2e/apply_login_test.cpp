// A login that fails ends the wizard: the dialog, the status, the terminal and the server.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "tests/e2e/apply_test.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/frame.h"
#include "tests/support/files.h"
#include "tests/support/golden.h"
#include "tests/support/local_port.h"
#include "tests/support/process.h"

namespace {

class ApplyLogin : public ApplyTest {
  protected:
    /// Answers every screen and expects the login to fail.
    void failToLogIn() {
        wizard.walkToTheEnd(answers);
        wizard.waitForText("Error!");
        wizard.waitForKey();
        EXPECT_EQ(words_in_frame(wizard.image()),
                  "Error! Could not login to Teluma server! Please make sure that the CLI port is "
                  "not in use! OK");
    }

    /// Presses "OK" and expects the wizard to end without a word.
    void dismiss() {
        wizard.press(Key::enter);
        EXPECT_TRUE(ends_with(wizard, exited(1), ""));
    }
};

TEST_F(ApplyLogin, with_a_refused_password_ends_the_wizard_and_the_server) {
    server.faults("password * refuse\n");
    failToLogIn();
    EXPECT_TRUE(server.isRunning());
    dismiss();
    server.waitForEnd();
    EXPECT_EQ(server.commands(),
              (std::vector<std::string>{"-A Adm1n secret", "user admin", "Adm1n secret"}));
}

TEST_F(ApplyLogin, dialog_looks_like_this_without_the_progress_lines) {
    server.faults("password * refuse\n");
    failToLogIn();
    EXPECT_SCREEN(wizard, "golden/apply/login_failed");
}

TEST_F(ApplyLogin, with_a_connection_that_is_closed_ends_the_wizard_and_the_server) {
    server.faults("connect * close\n");
    failToLogIn();
    dismiss();
    server.waitForEnd();
}

TEST_F(ApplyLogin, does_without_the_reply_to_the_users_name) {
    server.faults("=\"user admin\" * garbage-prompt\n");
    failToLogIn();
    EXPECT_EQ(server.commands().back(), "Adm1n secret");
    dismiss();
}

TEST_F(ApplyLogin, without_a_pid_file_in_time_ends_the_wizard_alone) {
    server.faults("start * missing\n");
    failToLogIn();
    dismiss();
    EXPECT_TRUE(server.isRunning());
    const std::vector<std::string> log = server.log();
    EXPECT_EQ(std::count(log.begin(), log.end(), "# connection 1 opened"), 0);
}

TEST_F(ApplyLogin, at_a_port_that_another_program_has_ends_the_wizard) {
    LocalPort other(9091);
    other.open("127.0.0.1");
    failToLogIn();
    dismiss();
    EXPECT_EQ(other.takeAll(), 0);
}

TEST_F(ApplyLogin, goes_to_the_address_of_its_section_that_has_comments_behind_it) {
    std::string config = read_file(InstalledServer::config);
    for (const char* commented : {"\tlisteners = (", "127.0.0.1:9091"})
        config.insert(config.find(commented, config.find("\ncli = {")) + std::strlen(commented),
                      " # only here");
    write_file(InstalledServer::config, config);
    askForLittle();
    runThrough();
    EXPECT_EQ(server.password(), "Adm1n secret");
}

TEST_F(ApplyLogin, without_a_configuration_file_ends_the_wizard) {
    unlink(InstalledServer::config);
    failToLogIn();
    dismiss();
    EXPECT_FALSE(exists(InstalledServer::config));
}

TEST_F(ApplyLogin, without_a_server_executable_ends_the_wizard) {
    unlink(InstalledServer::binary);
    failToLogIn();
    dismiss();
}

class ApplyStalePidFile : public ApplyLogin {
  protected:
    ApplyStalePidFile() {
        const std::string pid = run_command({"sh", "-c", "echo $$"}).out;
        write_file(InstalledServer::pid_file, pid);
    }
};

TEST_F(ApplyStalePidFile, shows_as_a_login_that_fails) {
    failToLogIn();
    dismiss();
}

TEST_F(ApplyStalePidFile, keeps_the_server_from_being_touched) {
    const std::string config = read_file(InstalledServer::config);
    failToLogIn();
    EXPECT_EQ(server.log(), std::vector<std::string>());
    EXPECT_EQ(read_file(InstalledServer::config), config);
    EXPECT_TRUE(exists(InstalledServer::pid_file));
}

TEST_F(ApplyStalePidFile, shows_the_password_as_set_all_the_same) {
    failToLogIn();
    EXPECT_NE(wizard.output().find("... DONE"), std::string::npos);
}

}  // namespace
