// Restarts of the server program, the login there, and what the sequences do to it.

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

#include "apply/cli_sequences.h"
#include "apply/cli_session.h"
#include "apply/server_process.h"
#include "apply/server_session.h"
#include "tests/apply/apply_rig.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

class ServerLifecycle : public InstalledServerCase {
  protected:
    static int restart() { return server_restart_with_password(password); }

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

TEST_F(ServerLifecycle, a_server_that_is_not_running_is_started_with_the_password_and_cli) {
    std::string expected = read_file(InstalledServer::config);
    const std::string list = "smtpOutgoing processing webadmin )";
    expected.insert(expected.find(list) + list.size() - 1, " cli ");
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(read_file(InstalledServer::config), expected);
    EXPECT_STREQ(server_session.cli_host, "127.0.0.1");
    EXPECT_EQ(server_session.cli_port, 9091);
    EXPECT_EQ(server.password(), password);
    EXPECT_EQ(server_session.pid, server.lastStarted());
    EXPECT_EQ(read_file(InstalledServer::pid_file), std::to_string(server_session.pid) + "\n");
    EXPECT_EQ(server_stop(), 0);
    server.waitForEnd();
    EXPECT_FALSE(exists(InstalledServer::pid_file));
}

TEST_F(ServerLifecycle, a_running_server_is_replaced_by_another_process) {
    const pid_t before = startedBefore();
    EXPECT_EQ(restart(), 0);
    waitForEnd(before);
    EXPECT_NE(server_session.pid, before);
    EXPECT_TRUE(process_running(server_session.pid));
    EXPECT_EQ(server.commands(), Lines{"-A Adm1n secret"});
}

TEST_F(ServerLifecycle, an_old_id_is_known_until_the_new_pid_file_is_there) {
    const pid_t before = startedBefore();
    server.faults("start 1 missing\n");
    EXPECT_EQ(restart(), 0);
    EXPECT_EQ(server_session.pid, before);
    EXPECT_EQ(cli_login(), 0);
    waitForEnd(before);
    EXPECT_EQ(server_stop(), 1);
}

class ServerLogin : public InstalledServerCase {
  protected:
    int logInWith(const std::string& fault) {
        server.faults(fault + "\n");
        EXPECT_EQ(server_restart_with_password(password), 0);
        return cli_login();
    }
};

TEST_F(ServerLogin, waits_for_a_slow_server_and_fails_with_one_that_refuses_or_ends) {
    for (const char* fault : {"connect 1 late 0.2", "connect 1 dribble"})
        EXPECT_EQ(logInWith(fault), 0) << fault;
    for (const char* fault : {"connect 1 close", "connect 1 refuse", "password 1 refuse",
                              "start 1 refuse", "password 1 crash"})
        EXPECT_EQ(logInWith(fault), 1) << fault;
}

using ServerOwner = ServerLogin;

TEST_F(ServerOwner, root_is_known_from_the_servers_own_user) {
    EXPECT_EQ(logInWith(""), 0);
    EXPECT_TRUE(server_session.peer_is_root);
    EXPECT_EQ(server_stop(), 0);
    server.waitForEnd();
    if (chown("/run/scratch", 12, 12) != 0) GTEST_SKIP() << "a user namespace without other ids";
    server.runAsItsUser();
    EXPECT_EQ(logInWith(""), 0);
    EXPECT_FALSE(server_session.peer_is_root);
}

class CliServer : public InstalledServerCase {
  protected:
    void SetUp() override { logIn(); }
};

TEST_F(CliServer, a_listener_address_in_use_is_refused_and_webadmin_repaired_at_the_next_attempt) {
    EXPECT_EQ(cli_config_webadmin("127.0.0.1", 25), 1);
    EXPECT_EQ(received().back(), "add listener address 127.0.0.1:25");
    EXPECT_EQ(cli_config_webadmin("127.0.0.1", 9001), 0);
    EXPECT_EQ(server.saved("listener webadmin"), Lines{"listener webadmin 127.0.0.1:9001"});
}

TEST_F(CliServer, all_listeners_of_a_service_are_replaced_and_it_is_enabled) {
    for (const char* command :
         {"config server", "config webadmin", "add listener address 127.0.0.2:9000",
          "add listener address 127.0.0.3:9000", "commit", "commit"})
        ASSERT_EQ(cli_command(command), 0);
    EXPECT_EQ(cli_config_webadmin("0.0.0.0", 9000), 0);
    EXPECT_EQ(server.saved("listener webadmin"), Lines{"listener webadmin 0.0.0.0:9000"});
    EXPECT_EQ(server.saved("enable webadmin"), Lines{"enable webadmin yes"});
    EXPECT_EQ(cli_config_listener("10.20.0.5", 2525, "smtp-incoming"), 0);
    EXPECT_EQ(cli_config_listener("10.20.0.5", 8080, "webmail"), 0);
    EXPECT_EQ(server.saved("certfile smtp-incoming").size(), 1u);
    EXPECT_EQ(server.saved("certfile webmail").size(), 0u);
    EXPECT_EQ(server.saved("enable webmail"), Lines{"enable webmail yes"});
}

}  // namespace
