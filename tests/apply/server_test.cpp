// Whom the wizard takes for its server: at the other end of the login, and in the pid file.

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "apply/server_process.h"
#include "apply/server_session.h"
#include "tests/apply/apply_rig.h"
#include "tests/apply/child_processes.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/server_account.h"

namespace {

constexpr const char* pid_file = InstalledServer::pid_file;

// What a process is sent as soon as it has another user, if anything.
int sent_at_once = 0;

using ServerOwner = InstalledServerCase;

TEST_F(ServerOwner, root_is_known_from_the_servers_own_user) {
    logIn();
    EXPECT_TRUE(server_session.peer_is_root);
    EXPECT_EQ(server_stop(), 0);
    server.waitForEnd();
    if (chown("/run/scratch", 12, 12) != 0) GTEST_SKIP() << "a user namespace without other ids";
    server.runAsItsUser();
    logIn();
    EXPECT_FALSE(server_session.peer_is_root);
}

// As with every server where there is no such table.
TEST_F(ServerOwner, is_trusted_where_the_system_lists_none_but_not_taken_for_root) {
    checked(mount("none", "/proc/self/net", "tmpfs", 0, nullptr), "mount");
    logIn();
    EXPECT_FALSE(server_session.peer_is_root);
}

// Whom the wizard signals when others than root can write the pid file.
class PidFile : public InstalledServerCase {
  protected:
    void SetUp() override {
        if (server_user() == 0) GTEST_SKIP() << "a user namespace without other ids";
        chown("/var/opt/teluma/run", server_user(), server_user());
    }

    // What comes of a pid file of one user's that names a process of another's.
    static void expectStop(int result, uid_t owner, uid_t user, int sent = 0) {
        OtherProcess process(user);
        write_file(pid_file, std::to_string(process.pid()) + "\n");
        chown(pid_file, owner, owner);
        EXPECT_NE(server_read_pid(), 1);
        sent_at_once = sent;
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
    expectStop(1, server_user(), server_user(), SIGSTOP);
}

// It would hold the passwords.
TEST_F(PidFile, of_the_servers_user_who_sends_the_wizards_child_a_crash_gets_no_core_dump) {
    expectStop(0, server_user(), server_user(), SIGQUIT);
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
    raise(sent_at_once);
    return result;
}
