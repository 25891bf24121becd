#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <utility>
#include <vector>

#include "apply/cli_session.h"
#include "apply/server_session.h"
#include "tests/apply/scripted_peer.h"
#include "tests/apply/set_text.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/local_port.h"
#include "tests/support/waits.h"
#include "wizard/base/host_facts.h"

namespace {

const std::vector<int> before_connecting = {2};
const std::string greeting = "TELUMA\r\nlogin> ";
const std::string password_prompt = "password> ";
const std::string accepted_login = greeting + password_prompt + accepted;

// A server that is not this process's child, at a port of 127.0.0.1. Without a thread: it serves a
// client while that waits.
class CliLogin : public testing::Test {
  protected:
    CliLogin() {
        std::signal(SIGPIPE, SIG_IGN);
        set_text(server_session.cli_host, "127.0.0.1");
        set_text(install_profiles[os_kind].admin_password, "Adm1n secret");
        set_text(install_profiles[os_kind].pid_file, directory / "teluma.pid");
        server_session.pid = 4711;
        server_session.cli_port = static_cast<std::uint16_t>(listener.number());
        listener.open("127.0.0.1");
        waits.atSocket = [this] { serve(); };
    }

    ~CliLogin() override { server_session = {}; }

    int logIn(const std::string& answers) {
        client.close();
        unsaid = answers;
        return cli_login();
    }

    // Whether a client has connected.
    bool hasClient() {
        if (!client.isOpen()) client = listener.takeConnection();
        return client.isOpen();
    }

    // Gives a client all answers and then the end of the connection.
    void serve() {
        if (!hasClient()) return;
        const std::string answers = std::exchange(unsaid, "");
        send(client.get(), answers.data(), answers.size(), 0);
        shutdown(client.get(), SHUT_WR);
    }

    // Everything that the client has sent so far.
    std::string received() const {
        char bytes[4096];
        const ssize_t length = recv(client.get(), bytes, sizeof bytes, MSG_PEEK);
        return {bytes, static_cast<size_t>(checked(static_cast<int>(length), "recv"))};
    }

    TempDir directory;
    Waits waits;
    LocalPort listener;
    Descriptor client;
    std::string unsaid;
};

TEST_F(CliLogin, sends_user_and_password_and_succeeds_when_the_password_is_accepted) {
    EXPECT_EQ(logIn(accepted_login), 0);
    EXPECT_EQ(received(), "user admin\r\nAdm1n secret\r\n");
    EXPECT_TRUE(server_session.peer_is_root);
    EXPECT_EQ(waits.sleeps, before_connecting);
}

TEST_F(CliLogin, sends_a_password_of_255_characters) {
    const std::string password(255, 'p');
    set_text(install_profiles[os_kind].admin_password, password);
    EXPECT_EQ(logIn(accepted_login), 0);
    EXPECT_EQ(received(), "user admin\r\n" + password + "\r\n");
}

TEST_F(CliLogin, depends_on_the_answer_to_the_password_alone) {
    EXPECT_EQ(logIn(greeting + password_prompt + refused), 1);
    EXPECT_EQ(received(), "user admin\r\nAdm1n secret\r\n");
    EXPECT_EQ(logIn(greeting + refused + accepted), 0);
    EXPECT_EQ(logIn(greeting + accepted + accepted), 0);
    EXPECT_EQ(logIn(greeting + accepted + refused), 1);
    EXPECT_EQ(logIn(std::string(256, 'x') + password_prompt + accepted), 0) << "no greeting";
    EXPECT_EQ(logIn(""), 1);
}

TEST_F(CliLogin, gives_up_after_two_seconds_when_nobody_has_the_other_end) {
    waits.atSocket = [this] {
        serve();
        client.close();
    };
    EXPECT_EQ(logIn(accepted_login), 1);
    EXPECT_EQ(waits.sleeps, (std::vector<int>{2, 1, 1}));
    EXPECT_FALSE(server_session.socket.isOpen());
    EXPECT_FALSE(server_session.peer_is_root);
}

TEST_F(CliLogin, connects_two_seconds_after_it_was_called) {
    bool connected_before = true;
    waits.inSleep = [&] { connected_before = hasClient(); };
    EXPECT_EQ(cli_connect(), 0);
    EXPECT_TRUE(hasClient());
    EXPECT_FALSE(connected_before);
}

TEST_F(CliLogin, resolves_a_host_name) {
    set_text(server_session.cli_host, "localhost");
    EXPECT_EQ(logIn(accepted_login), 0);
}

TEST_F(CliLogin, tries_to_connect_once_and_leaves_no_socket_when_nobody_listens) {
    listener.close();
    EXPECT_EQ(cli_login(), 1);
    EXPECT_EQ(waits.sleeps, before_connecting);
    EXPECT_EQ(cli_connect(), ECONNREFUSED);
    EXPECT_FALSE(server_session.socket.isOpen());
}

TEST_F(CliLogin, a_host_that_has_no_address_is_an_error_without_a_sleep) {
    set_text(server_session.cli_host, "");
    errno = 0;
    EXPECT_NE(cli_connect(), 0);
    EXPECT_FALSE(server_session.socket.isOpen());
    EXPECT_TRUE(waits.sleeps.empty());
    EXPECT_EQ(cli_login(), 1);
}

TEST_F(CliLogin, a_socket_that_is_not_to_be_had_is_an_error_without_a_sleep) {
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    const int failure = cli_connect();
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(failure, EMFILE);
    EXPECT_FALSE(server_session.socket.isOpen());
    EXPECT_TRUE(waits.sleeps.empty());
}

TEST_F(CliLogin, fails_when_no_process_id_is_known_after_four_seconds) {
    server_session.pid = 0;
    EXPECT_EQ(logIn(accepted_login), 1);
    EXPECT_EQ(waits.sleeps, (std::vector<int>{1, 1, 1, 1}));
    EXPECT_FALSE(hasClient());
}

TEST_F(CliLogin, goes_on_as_soon_as_the_pid_file_tells_the_process_id) {
    server_session.pid = 0;
    waits.inSleep = [&] {
        if (waits.sleeps.size() == 2) write_file(directory / "teluma.pid", "4711\n");
    };
    EXPECT_EQ(logIn(accepted_login), 0);
    EXPECT_EQ(waits.sleeps, (std::vector<int>{1, 1, 2}));
    EXPECT_EQ(server_session.pid, 4711);
}

}  // namespace
