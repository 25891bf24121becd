// The server's pid file and program, with a script in the place of the server.

#include "apply/server_process.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include "apply/server_session.h"
#include "tests/apply/child_processes.h"
#include "tests/apply/set_text.h"
#include "tests/apply/working_directory.h"
#include "tests/support/files.h"
#include "tests/support/waits.h"
#include "wizard/base/host_facts.h"

namespace {

// The selected installation profile names files in the current directory, an empty one, where a
// script that notes how it was called stands in the place of the server.
class ScriptedServer : public testing::Test {
  protected:
    static constexpr const char* config = "teluma.cfg";
    static constexpr const char* pid_file = "teluma.pid";

    ScriptedServer() {
        set_text(profile.config_file, config);
        set_text(profile.pid_file, pid_file);
        set_text(profile.server_binary, "./teluma");
        script("");
    }

    ~ScriptedServer() override {
        server_session = {};
        profile = {};
    }

    // Replaces the script by one that notes its calls and then runs these commands.
    static void script(const std::string& commands) {
        write_file("teluma",
                   "#!/bin/sh\n"
                   "{ printf 'called'; [ $# = 0 ] || printf ' [%s]' \"$@\"; echo; } >>calls\n" +
                       commands,
                   0755);
    }

    // The calls so far, one a line: the arguments, each in brackets.
    static std::string calls() { return exists("calls") ? read_file("calls") : ""; }

    InstallProfile& profile = install_profiles[os_kind];
    WorkingDirectory directory;
    Waits waits;
};

class ServerReadPid : public ScriptedServer {
  protected:
    // What is read from a pid file with this content.
    static int read(const std::string& content) {
        write_file(pid_file, content);
        const int result = server_read_pid();
        EXPECT_EQ(result, server_session.pid);
        EXPECT_EQ(read_file(pid_file), content);
        return result;
    }
};

TEST_F(ServerReadPid, returns_1_and_keeps_the_known_id_when_the_file_cannot_be_opened) {
    server_session.pid = 4711;
    EXPECT_EQ(server_read_pid(), 1);
    mkdir(pid_file, 0700);
    errno = EMLINK;
    EXPECT_EQ(server_read_pid(), 1) << "whatever has failed before";
    EXPECT_EQ(server_session.pid, 4711);
}

TEST_F(ServerReadPid, takes_the_number_of_the_first_line) {
    EXPECT_EQ(read("4711\n"), 4711);
    EXPECT_EQ(read("12"), 12);
    EXPECT_EQ(read("  13 is it\n14\n"), 13);
    EXPECT_EQ(read("\n15\n"), 0);
    EXPECT_EQ(read("none\n"), 0);
    EXPECT_EQ(read("-5\n"), -5);
    EXPECT_EQ(read(std::string(254, ' ') + "4711\n"), 4) << "of 255 characters";
    EXPECT_EQ(read("1\n"), 1) << "looks like no file to the caller";
    EXPECT_EQ(read(""), 0);
}

TEST_F(ServerReadPid, takes_0_from_a_file_that_can_be_opened_but_not_read) {
    // A process' memory, read from address 0: proc(5).
    set_text(profile.pid_file, "/proc/self/mem");
    server_session.pid = 4711;
    EXPECT_EQ(server_read_pid(), 0);
    EXPECT_EQ(server_session.pid, 0);
}

using ServerStop = ScriptedServer;

TEST_F(ServerStop, sends_sigterm_to_the_known_process_but_to_no_group_of_processes) {
    const auto stop = [](int pid) {
        server_session.pid = pid;
        return server_stop();
    };
    OtherProcess process;
    EXPECT_EQ(stop(0), 0);
    EXPECT_EQ(stop(-process.pid()), 1);
    EXPECT_TRUE(process.isRunning());
    EXPECT_EQ(stop(process.pid()), 0);
    const pid_t gone = process.pid();
    EXPECT_EQ(process.waitForEnd(), killed_by(SIGTERM));
    EXPECT_EQ(stop(gone), 1);
}

using ServerCommand = ScriptedServer;

TEST_F(ServerCommand, starts_the_server_without_arguments_and_drops_what_it_prints) {
    script("echo chatter");
    testing::internal::CaptureStdout();
    EXPECT_EQ(server_start(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(calls(), "called\n");
}

TEST_F(ServerCommand, gives_the_server_the_password_exactly) {
    const std::string password = " $(touch oops)`touch oops`\"; touch oops; \"\\";
    EXPECT_EQ(server_set_admin_password(password.c_str()), 0);
    EXPECT_EQ(calls(), "called [-A] [" + password + "]\n");
    EXPECT_FALSE(exists("oops"));
}

TEST_F(ServerCommand, takes_no_notice_of_what_the_server_says) {
    script("exit 3");
    EXPECT_EQ(server_start(), 0);
    EXPECT_EQ(server_set_admin_password("secret"), 0);
    unlink("teluma");
    EXPECT_EQ(server_start(), 0);
}

TEST_F(ServerCommand, fails_without_a_process_or_when_it_is_too_long_and_is_not_cut) {
    for (int (*command)() : {server_start, +[] { return server_set_admin_password("secret"); }}) {
        const FailingFork fails(1);
        EXPECT_EQ(command(), 1);
    }
    EXPECT_EQ(server_set_admin_password(std::string(250, 'p').c_str()), 1);
    set_text(profile.server_binary, profile.server_binary + std::string(240, ' '));
    EXPECT_EQ(server_start(), 1);
    EXPECT_EQ(calls(), "");
}

using Sleeps = std::vector<int>;

const std::string password_set = "called [-A] [secret]\n";
const std::string called_in_order = password_set + "called\n";

class ServerRestart : public ScriptedServer {
  protected:
    ServerRestart() { write_file(config, before); }

    static int restart() { return server_restart_with_password("secret"); }

    static void writePid(int pid) { write_file(pid_file, std::to_string(pid) + "\n"); }

    const std::string before = "services = ( a )\ncli=\nlisteners=\naddress=h:5\n";
};

TEST_F(ServerRestart, sets_the_password_then_prepares_the_configuration_then_starts_the_server) {
    script("cp teluma.cfg seen$#; [ $# != 0 ] || echo 4712 >teluma.pid");
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(calls(), called_in_order);
    EXPECT_EQ(waits.sleeps, Sleeps{});
    EXPECT_EQ(read_file("seen2"), before);
    EXPECT_EQ(read_file("seen0"), "services = ( a  cli )\ncli=\nlisteners=\naddress=h:5\n");
    EXPECT_STREQ(profile.admin_password, "secret");
    EXPECT_STREQ(server_session.cli_host, "h");
    EXPECT_EQ(server_session.cli_port, 5);
    EXPECT_EQ(server_session.pid, 4712);
}

TEST_F(ServerRestart, terminates_the_server_and_waits_until_its_pid_file_is_gone) {
    OtherProcess process;
    writePid(process.pid());
    waits.inSleep = [&] {
        EXPECT_EQ(calls(), "");
        if (waits.sleeps.size() == 7) unlink(pid_file);
    };
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(server_session.pid, process.pid()) << "as there is no new pid file yet";
    EXPECT_EQ(process.waitForEnd(), killed_by(SIGTERM));
    EXPECT_EQ(waits.sleeps, Sleeps(7, 1));
    EXPECT_EQ(calls(), called_in_order);
}

TEST_F(ServerRestart, fails_at_a_stale_pid_file_or_a_negative_number_before_anything_else) {
    OtherProcess process;
    writePid(process.pid());
    process.end();
    EXPECT_EQ(restart(), 1);
    writePid(-4711);
    EXPECT_EQ(restart(), 1);
    EXPECT_EQ(waits.sleeps, Sleeps{});
    EXPECT_EQ(calls(), "");
    EXPECT_STREQ(profile.admin_password, "");
    EXPECT_EQ(read_file(config), before);
}

TEST_F(ServerRestart, takes_a_pid_file_that_holds_1_for_none) {
    writePid(1);
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(waits.sleeps, Sleeps{});
    EXPECT_EQ(calls(), called_in_order);
}

TEST_F(ServerRestart, a_pid_file_without_a_number_is_waited_for_but_signals_nobody) {
    write_file(pid_file, "starting\n");
    waits.inSleep = [] { unlink(pid_file); };
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(waits.sleeps, Sleeps{1});
}

TEST_F(ServerRestart, keeps_the_password_and_goes_no_further_when_it_cannot_be_set) {
    const FailingFork fails(1);
    EXPECT_EQ(restart(), 1);
    EXPECT_STREQ(profile.admin_password, "secret");
    EXPECT_EQ(calls(), "");
    EXPECT_EQ(read_file(config), before);
}

TEST_F(ServerRestart, starts_the_server_also_without_a_configuration) {
    unlink(config);
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(calls(), called_in_order);
    EXPECT_STREQ(server_session.cli_host, "");
    EXPECT_EQ(server_session.pid, 0);
}

TEST_F(ServerRestart, fails_when_memory_has_run_out_or_the_server_cannot_be_run) {
    {
        // The processes are: the password's, cp, rm, the server's.
        const FailingFork fails(4);
        EXPECT_EQ(restart(), 1);
        EXPECT_EQ(calls(), password_set);
    }
    server_session.out_of_memory = true;
    EXPECT_EQ(restart(), 1);
    EXPECT_EQ(calls(), password_set + password_set);
}

}  // namespace
