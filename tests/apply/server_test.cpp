// Restarts of the server program, its pid file, the login there, and what the sequences do to it.

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include "apply/cli_sequences.h"
#include "apply/cli_session.h"
#include "apply/server_process.h"
#include "apply/server_session.h"
#include "tests/apply/apply_rig.h"
#include "tests/apply/child_processes.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/server_account.h"
#include "tests/support/wait_until.h"

namespace {

constexpr const char* pid_file = InstalledServer::pid_file;

// Whether a process is stopped as soon as it has another user.
bool is_stopped_at_once = false;

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
    EXPECT_EQ(read_file(pid_file), std::to_string(server_session.pid) + "\n");
    EXPECT_EQ(server_stop(), 0);
    server.waitForEnd();
    EXPECT_FALSE(exists(pid_file));
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

// Whom the wizard signals when others than root can write the pid file.
class PidFile : public InstalledServerCase {
  protected:
    void SetUp() override {
        if (server_user() == 0) GTEST_SKIP() << "a user namespace without other ids";
        chown("/var/opt/teluma/run", server_user(), server_user());
    }

    // What comes of a pid file of one user's that names a process of another's.
    static void expectStop(int result, uid_t owner, uid_t user) {
        OtherProcess process(user);
        write_file(pid_file, std::to_string(process.pid()) + "\n");
        chown(pid_file, owner, owner);
        EXPECT_NE(server_read_pid(), 1);
        EXPECT_EQ(server_stop(), result) << owner << " names a process of " << user;
        if (result == 0)
            EXPECT_EQ(process.waitForEnd(), killed_by(SIGTERM));
        else
            EXPECT_TRUE(process.isRunning());
    }

    static constexpr uid_t root = 0;
    static constexpr uid_t somebody = 12;
};

TEST_F(PidFile, of_roots_ends_any_process_of_the_servers_user_only_that_users_of_others_none) {
    expectStop(0, root, server_user());
    expectStop(0, root, root);
    expectStop(0, server_user(), server_user());
    expectStop(1, server_user(), root);
    expectStop(1, server_user(), somebody);
    expectStop(1, somebody, somebody);
    expectStop(1, somebody, root);
}

TEST_F(PidFile, of_the_servers_user_who_stops_the_wizards_child_keeps_nobody_waiting) {
    is_stopped_at_once = true;
    expectStop(1, server_user(), server_user());
    is_stopped_at_once = false;
}

TEST_F(PidFile, that_is_a_second_name_of_a_file_of_roots_ends_no_process) {
    const OtherProcess roots;
    const std::string other = "/var/opt/other.pid";
    write_file(other, std::to_string(roots.pid()) + "\n");
    ASSERT_EQ(link(other.c_str(), pid_file), 0);
    EXPECT_NE(server_read_pid(), 1);
    EXPECT_EQ(server_stop(), 1);
    EXPECT_TRUE(roots.isRunning());
}

TEST_F(PidFile, that_is_a_link_of_the_servers_user_is_none) {
    write_file("/run/scratch/other.pid", "4711\n");
    EXPECT_EQ(as_user(server_user(), [] { symlink("/run/scratch/other.pid", pid_file); }),
              exited(0));
    EXPECT_EQ(server_read_pid(), 1);
    EXPECT_EQ(server_session.pid, 0);
}

TEST_F(PidFile, that_is_no_file_is_none_whatever_has_failed_before) {
    ASSERT_EQ(mkdir(pid_file, 0700), 0);
    errno = EMLINK;
    EXPECT_EQ(server_read_pid(), 1);
}

TEST_F(PidFile, that_is_no_file_is_not_even_opened) {
    ASSERT_EQ(mkfifo(pid_file, 0600), 0);
    const Descriptor watch(checked(inotify_init1(IN_NONBLOCK | IN_CLOEXEC), "inotify_init1"));
    checked(inotify_add_watch(watch.get(), pid_file, IN_OPEN), "inotify_add_watch");
    EXPECT_EQ(server_read_pid(), 1);
    char event[256];
    EXPECT_EQ(read(watch.get(), event, sizeof(event)), -1);
}

}  // namespace

// In the place of the C library's.
extern "C" int setuid(uid_t user) noexcept {
    const int result = static_cast<int>(syscall(SYS_setuid, user));
    if (is_stopped_at_once) raise(SIGSTOP);
    return result;
}
