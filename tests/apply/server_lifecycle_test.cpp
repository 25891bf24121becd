// Restarts of the server program.

#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "apply/cli_session.h"
#include "apply/server_config.h"
#include "apply/server_process.h"
#include "tests/apply/installed_server_case.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"
#include "wizard/base/install_profile.h"

namespace {

class ServerLifecycle : public InstalledServerCase {
  protected:
    static int restart() { return server_restart_with_password(password); }

    static std::string storedId() {
        return exists(InstalledServer::pid_file) ? read_file(InstalledServer::pid_file) : "none";
    }

    // A server is running, and a restart is about to stop it.
    pid_t startedBefore() {
        server.start();
        return server.lastStarted();
    }

    // A server takes its pid file away a little before it is gone itself.
    static void waitForEnd(pid_t process) {
        wait_until([=] { return !process_running(process) && kill(process, 0) != 0; },
                   "the server was gone");
    }
};

TEST_F(ServerLifecycle, a_server_that_is_not_running_is_started_with_the_password) {
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(server.password(), password);
    EXPECT_GT(server_pid, 1);
    EXPECT_EQ(server_pid, server.lastStarted());
    EXPECT_EQ(storedId(), std::to_string(server_pid) + "\n");
    EXPECT_TRUE(process_running(server_pid));
}

TEST_F(ServerLifecycle, a_running_server_is_replaced_by_another_process) {
    const pid_t before = startedBefore();
    EXPECT_EQ(restart(), 0);
    waitForEnd(before);
    EXPECT_NE(server_pid, before);
    EXPECT_TRUE(process_running(server_pid));
    EXPECT_EQ(server.commands(), Lines{"-A Adm1n secret"});
}

TEST_F(ServerLifecycle, the_configuration_gets_cli_and_nothing_else_changes) {
    std::string expected = read_file(InstalledServer::config);
    const std::string list = "smtpOutgoing processing webadmin )";
    const size_t place = expected.find(list);
    ASSERT_NE(place, std::string::npos);
    expected.insert(place + list.size() - 1, " cli ");
    const FileFacts before = file_facts(InstalledServer::config);
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(read_file(InstalledServer::config), expected);
    const FileFacts after = file_facts(InstalledServer::config);
    EXPECT_EQ(after.mode, before.mode);
    EXPECT_EQ(after.owner, before.owner);
    EXPECT_STREQ(cli_host, "127.0.0.1");
    EXPECT_EQ(cli_port, 9091);
    EXPECT_FALSE(exists("temp.cfg"));
}

TEST_F(ServerLifecycle, a_pid_file_that_stays_for_a_while_is_waited_for) {
    server.faults("stop 1 stays 0.3\n");
    startedBefore();
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(server_pid, server.lastStarted());
}

TEST_F(ServerLifecycle, waits_on_while_the_pid_file_stays_for_ever) {
    server.faults("stop 1 stays\n");
    startedBefore();
    waits.inSleep = [&] {
        if (waits.sleeps.size() == 50)
            unlink(InstalledServer::pid_file);
    };
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(waits.sleeps.size(), 50u);
}

TEST_F(ServerLifecycle, a_stale_pid_file_of_a_crashed_server_fails) {
    const pid_t before = startedBefore();
    kill(before, SIGKILL);
    waitForEnd(before);
    EXPECT_EQ(restart(), 1);
    EXPECT_EQ(server.commands(), Lines{});
    EXPECT_EQ(storedId(), std::to_string(before) + "\n");
}

TEST_F(ServerLifecycle, a_negative_number_in_the_pid_file_fails_and_signals_nobody) {
    const pid_t before = startedBefore();
    write_file(InstalledServer::pid_file, "-" + std::to_string(before) + "\n");
    EXPECT_EQ(restart(), 1);
    EXPECT_TRUE(process_running(before));
    EXPECT_EQ(server.commands(), Lines{});
}

TEST_F(ServerLifecycle, a_pid_file_that_comes_late_is_found_by_the_login) {
    server.faults("start 1 late 2\n");
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(server_pid, 0);
    waits.inSleep = [&] {
        if (waits.sleeps.size() == 2)
            wait_until([] { return exists(InstalledServer::pid_file); }, "the pid file is there");
    };
    EXPECT_EQ(cli_login(), 0);
    EXPECT_EQ(waits.sleeps, (std::vector<int>{1, 1, 2}));
    EXPECT_EQ(server_pid, server.lastStarted());
}

TEST_F(ServerLifecycle, a_pid_file_that_never_comes_fails_the_login_though_the_server_answers) {
    server.faults("start 1 missing\n");
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(cli_login(), 1);
    EXPECT_EQ(waits.sleeps, (std::vector<int>{1, 1, 1, 1}));
    EXPECT_EQ(server.commands(), Lines{"-A Adm1n secret"});
}

TEST_F(ServerLifecycle, without_a_new_pid_file_the_old_process_id_stays_known) {
    const pid_t before = startedBefore();
    server.faults("start 1 missing\n");
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(server_pid, before);
    EXPECT_EQ(cli_login(), 0);
    waitForEnd(before);
    EXPECT_EQ(server_stop(), 1);
}

TEST_F(ServerLifecycle, a_server_that_refuses_to_start_is_not_noticed_before_the_login) {
    server.faults("start 1 refuse\n");
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(cli_login(), 1);
}

TEST_F(ServerLifecycle, stopping_ends_the_server_which_removes_its_pid_file) {
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(server_stop(), 0);
    wait_until([] { return !process_running(server_pid); }, "the server has ended");
    EXPECT_FALSE(exists(InstalledServer::pid_file));
}

class ServerPassword : public InstalledServerCase {
  protected:
    // Expects that the server has exactly this password, and takes it.
    void expectPassword(const std::string& text) {
        EXPECT_EQ(server_restart_with_password(text.c_str()), 0);
        EXPECT_EQ(server.password(), text);
        EXPECT_EQ(cli_login(), 0);
    }
};

TEST_F(ServerPassword, of_every_printable_character_reaches_the_server_exactly) {
    std::string characters;
    for (char character = '!'; character <= '~'; ++character)
        characters += character;
    expectPassword(characters.substr(0, 50));
    expectPassword(characters.substr(44));
}

TEST_F(ServerPassword, with_blanks_around_and_within_reaches_the_server_exactly) {
    expectPassword(" two  words ");
}

TEST_F(ServerPassword, of_what_a_shell_would_carry_out_reaches_the_server_exactly) {
    expectPassword("$(touch oops)`touch oops`\"; touch oops; \"\\\\");
    EXPECT_FALSE(exists("oops"));
}

TEST_F(ServerPassword, of_50_characters_that_need_escapes_reaches_the_server_exactly) {
    expectPassword(std::string(50, '\\'));
}

TEST_F(ServerPassword, that_begins_with_a_dash_reaches_the_server_exactly) {
    expectPassword("-A -f");
}

}  // namespace
