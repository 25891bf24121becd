#include "apply/server_process.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdio>
#include <string>

#include "tests/apply/failing_fork.h"
#include "tests/apply/other_process.h"
#include "tests/apply/scripted_server.h"
#include "tests/support/files.h"
#include "wizard/base/install_profile.h"

namespace {

class ServerReadPid : public ScriptedServer {
  protected:
    // What is read from a pid file with this content.
    static int read(const std::string& content) {
        write_file(pid_file, content);
        const int result = server_read_pid();
        EXPECT_EQ(result, server_pid);
        return result;
    }
};

TEST_F(ServerReadPid, returns_1_and_keeps_the_known_id_without_a_pid_file) {
    server_pid = 4711;
    EXPECT_EQ(server_read_pid(), 1);
    EXPECT_EQ(server_pid, 4711);
}

TEST_F(ServerReadPid, returns_1_and_keeps_the_known_id_when_the_file_cannot_be_opened) {
    mkdir(pid_file, 0700);
    server_pid = 4711;
    EXPECT_EQ(server_read_pid(), 1);
    EXPECT_EQ(server_pid, 4711);
}

TEST_F(ServerReadPid, takes_the_number_of_the_first_line) {
    EXPECT_EQ(read("4711\n"), 4711);
    EXPECT_EQ(read("12"), 12);
    EXPECT_EQ(read("  13 is it\n14\n"), 13);
    EXPECT_EQ(read("\n15\n"), 0);
}

TEST_F(ServerReadPid, takes_no_number_for_0) {
    EXPECT_EQ(read("none\n"), 0);
    EXPECT_EQ(read(""), 0);
}

TEST_F(ServerReadPid, takes_0_from_a_file_that_can_be_opened_but_not_read) {
    // A process' memory, read from address 0: proc(5).
    std::snprintf(install_profiles[os_kind].pid_file, sizeof(InstallProfile::pid_file),
                  "/proc/self/mem");
    server_pid = 4711;
    EXPECT_EQ(server_read_pid(), 0);
    EXPECT_EQ(server_pid, 0);
}

TEST_F(ServerReadPid, takes_negative_numbers_as_they_are) {
    EXPECT_EQ(read("-5\n"), -5);
}

TEST_F(ServerReadPid, reads_no_more_than_255_characters_of_the_line) {
    EXPECT_EQ(read(std::string(254, ' ') + "4711\n"), 4);
}

TEST_F(ServerReadPid, a_pid_file_that_holds_1_looks_like_none_to_the_caller) {
    EXPECT_EQ(read("1\n"), 1);
}

TEST_F(ServerReadPid, leaves_the_file_as_it_was) {
    read("4711\n");
    EXPECT_EQ(read_file(pid_file), "4711\n");
}

class ServerStop : public ScriptedServer {
  protected:
    OtherProcess process;
};

TEST_F(ServerStop, does_nothing_while_no_process_id_is_known) {
    server_pid = 0;
    EXPECT_EQ(server_stop(), 0);
    EXPECT_TRUE(process.isRunning());
}

TEST_F(ServerStop, sends_the_server_sigterm) {
    server_pid = process.pid();
    EXPECT_EQ(server_stop(), 0);
    EXPECT_EQ(process.waitForEnd(), killed_by(SIGTERM));
}

TEST_F(ServerStop, fails_when_there_is_no_such_process) {
    server_pid = process.pid();
    process.end();
    EXPECT_EQ(server_stop(), 1);
}

TEST_F(ServerStop, fails_for_a_negative_number_and_signals_no_group_of_processes) {
    server_pid = -process.pid();
    EXPECT_EQ(server_stop(), 1);
    EXPECT_TRUE(process.isRunning());
}

class ServerStart : public ScriptedServer {};

TEST_F(ServerStart, runs_the_server_without_arguments) {
    EXPECT_EQ(server_start(), 0);
    EXPECT_EQ(calls(), "called\n");
}

TEST_F(ServerStart, takes_no_notice_of_what_the_server_says) {
    script("exit 3");
    EXPECT_EQ(server_start(), 0);
    unlink("teluma");
    EXPECT_EQ(server_start(), 0);
}

TEST_F(ServerStart, drops_what_the_server_prints) {
    script("echo chatter");
    testing::internal::CaptureStdout();
    EXPECT_EQ(server_start(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(ServerStart, fails_when_no_process_is_to_be_had) {
    const FailingFork fails(1);
    EXPECT_EQ(server_start(), 1);
    EXPECT_EQ(calls(), "");
}

TEST_F(ServerStart, fails_when_the_command_is_too_long_to_be_run_whole) {
    InstallProfile& profile = install_profiles[os_kind];
    std::string binary = profile.server_binary;
    binary.resize(250, ' ');
    std::snprintf(profile.server_binary, sizeof(profile.server_binary), "%s", binary.c_str());
    EXPECT_EQ(server_start(), 1);
    EXPECT_EQ(calls(), "");
}

class ServerSetAdminPassword : public ScriptedServer {};

TEST_F(ServerSetAdminPassword, gives_the_server_the_password) {
    EXPECT_EQ(server_set_admin_password("Adm1n secret"), 0);
    EXPECT_EQ(calls(), "called [-A] [Adm1n secret]\n");
}

TEST_F(ServerSetAdminPassword, every_printable_character_reaches_the_server) {
    std::string password;
    for (char character = ' '; character <= '~'; ++character)
        password += character;
    EXPECT_EQ(server_set_admin_password(password.c_str()), 0);
    EXPECT_EQ(calls(), "called [-A] [" + password + "]\n");
}

TEST_F(ServerSetAdminPassword, the_longest_password_of_characters_to_be_escaped_fits) {
    const std::string password(50, '"');
    EXPECT_EQ(server_set_admin_password(password.c_str()), 0);
    EXPECT_EQ(calls(), "called [-A] [" + password + "]\n");
}

TEST_F(ServerSetAdminPassword, a_password_that_fits_into_no_command_fails_and_is_not_cut) {
    EXPECT_EQ(server_set_admin_password(std::string(250, 'p').c_str()), 1);
    EXPECT_EQ(calls(), "");
}

TEST_F(ServerSetAdminPassword, takes_no_notice_of_what_the_server_says) {
    script("exit 3");
    EXPECT_EQ(server_set_admin_password("secret"), 0);
}

TEST_F(ServerSetAdminPassword, fails_when_no_process_is_to_be_had) {
    const FailingFork fails(1);
    EXPECT_EQ(server_set_admin_password("secret"), 1);
}

}  // namespace
