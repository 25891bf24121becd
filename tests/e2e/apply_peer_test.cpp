// Who is at the other end of the connection: nobody but root's or the server's own user is sent
// anything.

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <ctime>

#include "tests/e2e/apply_test.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/wait_until.h"

namespace {

constexpr uid_t other_user = 12;
constexpr const char* heard_file = "/run/scratch/heard";

/// A user of the host without any rights, who waits until the port of the command-line interface is
/// free, listens there, greets whoever connects and accepts every command. The scratch directory
/// has to be that user's.
class OtherUsersServer {
  public:
    /// For sockets of AF_INET, at 127.0.0.1, or AF_INET6, at every address of either kind.
    explicit OtherUsersServer(int family) : process(checked(fork(), "fork")) {
        if (process != 0) return;
        checked(setgroups(0, nullptr), "setgroups");
        checked(setgid(other_user), "setgid");
        checked(setuid(other_user), "setuid");
        serve(listenerOf(family));
    }

    ~OtherUsersServer() {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }

    OtherUsersServer(const OtherUsersServer&) = delete;
    OtherUsersServer& operator=(const OtherUsersServer&) = delete;

    static void waitUntilListening() {
        wait_until([] { return exists(heard_file); }, "the other user listened");
    }

  private:
    static int listenerOf(int family) {
        constexpr in_port_t cli_port = 9091;
        sockaddr_in6 wide{};
        wide.sin6_family = AF_INET6;
        wide.sin6_port = htons(cli_port);
        sockaddr_in narrow{};
        narrow.sin_family = AF_INET;
        narrow.sin_port = htons(cli_port);
        narrow.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const void* address = family == AF_INET6 ? static_cast<const void*>(&wide) : &narrow;
        const socklen_t length = family == AF_INET6 ? sizeof wide : sizeof narrow;
        const int listener = checked(socket(family, SOCK_STREAM, 0), "socket");
        const int on = 1;
        setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        const timespec moment{0, 1000000};
        while (bind(listener, static_cast<const sockaddr*>(address), length) == -1 ||
               listen(listener, 1) == -1)
            nanosleep(&moment, nullptr);
        return listener;
    }

    static void say(int descriptor, const std::string& text) {
        checked(static_cast<int>(write(descriptor, text.data(), text.size())), "write");
    }

    [[noreturn]] static void serve(int listener) {
        const int heard = checked(open(heard_file, O_WRONLY | O_CREAT | O_CLOEXEC, 0644), "open");
        for (;;) {
            const Descriptor client(checked(accept(listener, nullptr, nullptr), "accept"));
            say(client.get(), "TELUMA\r\nlogin> ");
            char byte = 0;
            while (read(client.get(), &byte, 1) == 1) {
                say(heard, std::string(1, byte));
                if (byte == '\n') say(client.get(), "+OK: done\r\nserver> ");
            }
        }
    }

    pid_t process;
};

class ApplyPeer : public ApplyTest {
  protected:
    void SetUp() override {
        if (chown("/run/scratch", other_user, other_user) != 0)
            GTEST_SKIP() << "a user namespace without other ids";
    }
};

class ApplyOtherUser : public ApplyPeer, public testing::WithParamInterface<int> {
  protected:
    void expectNothingSent() {
        wizard.waitForDialog("Error!");
        EXPECT_EQ(words_in_frame(wizard.image()).find("Error! Could not login to Teluma"), 0u);
        EXPECT_EQ(read_file(heard_file), "");
        wizard.press(Key::enter);
        EXPECT_EQ(wizard.waitExit(), exited(1));
    }
};

std::string listener_name(const testing::TestParamInfo<int>& info) {
    return info.param == AF_INET ? "127_0_0_1" : "the_ipv6_wildcard";
}

INSTANTIATE_TEST_SUITE_P(At, ApplyOtherUser, testing::Values(AF_INET, AF_INET6), listener_name);

// The server runs without a command-line interface until the wizard switches that on.
TEST_P(ApplyOtherUser, who_has_the_port_before_the_start_is_sent_nothing) {
    server.start();
    const OtherUsersServer other(GetParam());
    OtherUsersServer::waitUntilListening();
    wizard.walkToTheEnd(answers);
    expectNothingSent();
}

TEST_P(ApplyOtherUser, who_takes_the_port_between_stop_and_start_is_sent_nothing) {
    server.wrapBy(
        "[ $# = 0 ] || until [ -e /run/scratch/taken ]; do sleep 0.01; done\n"
        "exec $0.real \"$@\"\n");
    std::string config = read_file(InstalledServer::config);
    const std::string end_of_services = "webadmin )";
    config.replace(config.find(end_of_services), end_of_services.size(), "webadmin cli )");
    write_file(InstalledServer::config, config);
    server.start();
    const OtherUsersServer other(GetParam());
    wizard.walkToTheEnd(answers);
    OtherUsersServer::waitUntilListening();
    write_file("/run/scratch/taken", "");
    expectNothingSent();
}

TEST_F(ApplyPeer, that_is_the_servers_own_user_is_spoken_to) {
    server.runAsItsUser();
    runThrough();
    EXPECT_EQ(server.commands(), wire());
}

}  // namespace
