// The order of a restart, with a script in the place of the server.

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

#include "apply/server_config.h"
#include "apply/server_process.h"
#include "tests/apply/failing_fork.h"
#include "tests/apply/other_process.h"
#include "tests/apply/scripted_server.h"
#include "tests/support/files.h"
#include "wizard/base/install_profile.h"

namespace {

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
    EXPECT_EQ(server_pid, 0);
}

TEST_F(ServerRestart, terminates_the_server_and_waits_until_its_pid_file_is_gone) {
    OtherProcess process;
    write_file(pid_file, std::to_string(process.pid()) + "\n");
    waits.inSleep = [&] {
        EXPECT_EQ(calls(), "");
        if (waits.sleeps.size() == 7)
            unlink(pid_file);
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

TEST_F(ServerRestart, fails_at_a_negative_number_in_the_pid_file) {
    write_file(pid_file, "-4711\n");
    EXPECT_EQ(restart(), 1);
    EXPECT_EQ(calls(), "");
}

TEST_F(ServerRestart, takes_a_pid_file_that_holds_1_for_none) {
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
    EXPECT_STREQ(cli_host, "h");
    EXPECT_EQ(cli_port, 5);
}

TEST_F(ServerRestart, keeps_the_password_for_the_login) {
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(keptPassword(), "secret");
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
    EXPECT_STREQ(cli_host, "");
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
    EXPECT_EQ(server_pid, 4712);
}

TEST_F(ServerRestart, keeps_the_old_process_id_when_the_new_pid_file_is_not_there_at_once) {
    const OtherProcess process;
    write_file(pid_file, std::to_string(process.pid()) + "\n");
    waits.inSleep = [] { unlink(pid_file); };
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(server_pid, process.pid());
    EXPECT_EQ(waits.sleeps, Sleeps{1});
}

}  // namespace
