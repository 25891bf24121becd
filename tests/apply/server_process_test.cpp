// The server's pid file and program, with a script in the place of the server.

#include "apply/server_process.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdio>
#include <string>
#include <vector>

#include "apply/server_session.h"
#include "tests/apply/failing_fork.h"
#include "tests/apply/other_process.h"
#include "tests/apply/scripted_server.h"
#include "tests/support/files.h"
#include "wizard/base/host_facts.h"

namespace {

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
    EXPECT_EQ(server_read_pid(), 1);
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
    std::snprintf(install_profiles[os_kind].pid_file, sizeof(InstallProfile::pid_file),
                  "/proc/self/mem");
    server_session.pid = 4711;
    EXPECT_EQ(server_read_pid(), 0);
    EXPECT_EQ(server_session.pid, 0);
}

class ServerStop : public ScriptedServer {
  protected:
    // What comes of an id.
    static int stop(int pid) {
        server_session.pid = pid;
        return server_stop();
    }

    OtherProcess process;
};

TEST_F(ServerStop, signals_nobody_while_no_process_id_is_known_and_no_group_of_processes) {
    EXPECT_EQ(stop(0), 0);
    EXPECT_EQ(stop(-process.pid()), 1);
    EXPECT_TRUE(process.isRunning());
}

TEST_F(ServerStop, sends_the_server_sigterm) {
    EXPECT_EQ(stop(process.pid()), 0);
    EXPECT_EQ(process.waitForEnd(), killed_by(SIGTERM));
}

TEST_F(ServerStop, fails_when_there_is_no_such_process) {
    const pid_t gone = process.pid();
    process.end();
    EXPECT_EQ(stop(gone), 1);
}

class ServerCommand : public ScriptedServer {
  protected:
    static void expectPasswordArrives(const std::string& password) {
        unlink("calls");
        EXPECT_EQ(server_set_admin_password(password.c_str()), 0);
        EXPECT_EQ(calls(), "called [-A] [" + password + "]\n");
    }
};

TEST_F(ServerCommand, starts_the_server_without_arguments_and_drops_what_it_prints) {
    script("echo chatter");
    testing::internal::CaptureStdout();
    EXPECT_EQ(server_start(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(calls(), "called\n");
}

TEST_F(ServerCommand, gives_the_server_the_password_exactly) {
    std::string printable;
    for (char character = ' '; character <= '~'; ++character) printable += character;
    for (const std::string& password :
         {std::string("Adm1n secret"), printable, std::string(" two  words "), std::string("-A -f"),
          std::string(50, '"'), std::string("$(touch oops)`touch oops`\"; touch oops; \"\\\\")})
        expectPasswordArrives(password);
    EXPECT_FALSE(exists("oops"));
}

TEST_F(ServerCommand, takes_no_notice_of_what_the_server_says) {
    script("exit 3");
    EXPECT_EQ(server_start(), 0);
    EXPECT_EQ(server_set_admin_password("secret"), 0);
    unlink("teluma");
    EXPECT_EQ(server_start(), 0);
}

TEST_F(ServerCommand, fails_when_no_process_is_to_be_had) {
    for (int (*command)() : {server_start, +[] { return server_set_admin_password("secret"); }}) {
        const FailingFork fails(1);
        EXPECT_EQ(command(), 1);
    }
    EXPECT_EQ(calls(), "");
}

TEST_F(ServerCommand, fails_when_it_is_too_long_and_is_not_cut) {
    EXPECT_EQ(server_set_admin_password(std::string(250, 'p').c_str()), 1);
    InstallProfile& profile = install_profiles[os_kind];
    std::string binary = profile.server_binary;
    binary.resize(250, ' ');
    std::snprintf(profile.server_binary, sizeof(profile.server_binary), "%s", binary.c_str());
    EXPECT_EQ(server_start(), 1);
    EXPECT_EQ(calls(), "");
}

using Sleeps = std::vector<int>;

const std::string called_in_order = "called [-A] [secret]\ncalled\n";

class ServerRestart : public ScriptedServer {
  protected:
    ServerRestart() { write_file(config, "services = ( a )\ncli=\nlisteners=\naddress=h:5\n"); }

    static int restart() { return server_restart_with_password("secret"); }

    static std::string keptPassword() { return install_profiles[os_kind].admin_password; }
};

TEST_F(ServerRestart, without_a_pid_file_signals_nobody_and_does_not_wait) {
    const OtherProcess process;
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(waits.sleeps, Sleeps{});
    EXPECT_EQ(calls(), called_in_order);
    EXPECT_EQ(server_session.pid, 0);
}

TEST_F(ServerRestart, terminates_the_server_and_waits_until_its_pid_file_is_gone) {
    OtherProcess process;
    write_file(pid_file, std::to_string(process.pid()) + "\n");
    waits.inSleep = [&] {
        EXPECT_EQ(calls(), "");
        if (waits.sleeps.size() == 7) unlink(pid_file);
    };
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(process.waitForEnd(), killed_by(SIGTERM));
    EXPECT_EQ(waits.sleeps, Sleeps(7, 1));
    EXPECT_EQ(calls(), called_in_order);
}

TEST_F(ServerRestart, fails_at_a_stale_pid_file_before_anything_else) {
    OtherProcess process;
    write_file(pid_file, std::to_string(process.pid()) + "\n");
    process.end();
    EXPECT_EQ(restart(), 1);
    EXPECT_EQ(waits.sleeps, Sleeps{});
    EXPECT_EQ(calls(), "");
    EXPECT_EQ(keptPassword(), "");
    EXPECT_EQ(read_file(config), "services = ( a )\ncli=\nlisteners=\naddress=h:5\n");
}

TEST_F(ServerRestart, takes_a_pid_file_that_holds_1_for_none_and_a_negative_number_for_a_failure) {
    write_file(pid_file, "-4711\n");
    EXPECT_EQ(restart(), 1);
    EXPECT_EQ(calls(), "");
    write_file(pid_file, "1\n");
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

TEST_F(ServerRestart, sets_the_password_then_prepares_the_configuration_then_starts_the_server) {
    script("cp teluma.cfg seen$#");
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(calls(), called_in_order);
    EXPECT_EQ(read_file("seen2"), "services = ( a )\ncli=\nlisteners=\naddress=h:5\n");
    EXPECT_EQ(read_file("seen0"), "services = ( a  cli )\ncli=\nlisteners=\naddress=h:5\n");
    EXPECT_EQ(keptPassword(), "secret");
    EXPECT_STREQ(server_session.cli_host, "h");
    EXPECT_EQ(server_session.cli_port, 5);
}

TEST_F(ServerRestart, keeps_the_password_and_goes_no_further_when_it_cannot_be_set) {
    const FailingFork fails(1);
    EXPECT_EQ(restart(), 1);
    EXPECT_EQ(keptPassword(), "secret");
    EXPECT_EQ(calls(), "");
    EXPECT_EQ(read_file(config), "services = ( a )\ncli=\nlisteners=\naddress=h:5\n");
}

TEST_F(ServerRestart, starts_the_server_also_without_a_configuration) {
    unlink(config);
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(calls(), called_in_order);
    EXPECT_STREQ(server_session.cli_host, "");
}

TEST_F(ServerRestart, does_not_start_the_server_once_memory_has_run_out) {
    server_session.out_of_memory = true;
    EXPECT_EQ(restart(), 1);
    EXPECT_EQ(calls(), "called [-A] [secret]\n");
}

TEST_F(ServerRestart, fails_when_the_server_cannot_be_run) {
    // The processes are: the password's, cp, rm, the server's.
    const FailingFork fails(4);
    EXPECT_EQ(restart(), 1);
    EXPECT_EQ(calls(), "called [-A] [secret]\n");
}

TEST_F(ServerRestart, learns_the_new_process_id) {
    script("[ $# != 0 ] || echo 4712 >teluma.pid");
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(server_session.pid, 4712);
}

TEST_F(ServerRestart, keeps_the_old_process_id_when_the_new_pid_file_is_not_there_at_once) {
    const OtherProcess process;
    write_file(pid_file, std::to_string(process.pid()) + "\n");
    waits.inSleep = [] { unlink(pid_file); };
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(server_session.pid, process.pid());
    EXPECT_EQ(waits.sleeps, Sleeps{1});
}

}  // namespace
