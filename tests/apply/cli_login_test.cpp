#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "apply/cli_session.h"
#include "apply/server_session.h"
#include "tests/apply/scripted_peer.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/local_port.h"
#include "tests/support/waits.h"
#include "wizard/base/host_facts.h"

namespace {

// A server at a TCP port of 127.0.0.1 that serves one client, without a thread: the test calls
// serve() while the client waits.
class ListeningPeer {
  public:
    // The client that connects finds these answers and then the end of the connection.
    explicit ListeningPeer(std::string answers_to_give) : answers(std::move(answers_to_give)) {
        listener.open("127.0.0.1");
    }

    int port() const { return listener.number(); }

    // Whether a client has connected, be it served or not.
    bool hasClient() {
        if (!client.isOpen()) client = listener.takeConnection();
        return client.isOpen();
    }

    void serve() {
        if (served || !hasClient()) return;
        served = true;
        checked(static_cast<int>(write(client.get(), answers.data(), answers.size())), "write");
        checked(shutdown(client.get(), SHUT_WR), "shutdown");
    }

    // Leaves the client alone with what has been sent.
    void hangUp() { client.close(); }

    // Everything that the client has sent so far.
    std::string received() const {
        char bytes[4096];
        const ssize_t length = recv(client.get(), bytes, sizeof bytes, MSG_PEEK);
        return {bytes, static_cast<size_t>(checked(static_cast<int>(length), "recv"))};
    }

    // Takes no more clients: whoever connects is refused.
    void stopListening() { listener.close(); }

  private:
    std::string answers;
    LocalPort listener;
    Descriptor client;
    bool served = false;
};

template <size_t size>
void set_text(char (&field)[size], const std::string& text) {
    std::snprintf(field, size, "%s", text.c_str());
}

const std::vector<int> before_connecting = {2};
const std::string greeting = "TELUMA\r\nlogin> ";
const std::string password_prompt = "password> ";

// A server that is not this process's child, at a port of its own.
class CliLogin : public testing::Test {
  protected:
    CliLogin() {
        std::signal(SIGPIPE, SIG_IGN);
        set_text(server_session.cli_host, "127.0.0.1");
        set_text(install_profiles[os_kind].admin_password, "Adm1n secret");
        set_text(install_profiles[os_kind].pid_file, directory / "teluma.pid");
        server_session.pid = 4711;
    }

    ~CliLogin() override { server_session = {}; }

    // A server with these answers. It sends them as soon as it has a client.
    void serve(const std::string& answers) {
        peer = std::make_unique<ListeningPeer>(answers);
        server_session.cli_port = static_cast<std::uint16_t>(peer->port());
        waits.atSocket = [this] { peer->serve(); };
    }

    int logIn(const std::string& answers) {
        serve(answers);
        return cli_login();
    }

    TempDir directory;
    Waits waits;
    std::unique_ptr<ListeningPeer> peer;
};

TEST_F(CliLogin, sends_user_and_password_and_succeeds_when_the_password_is_accepted) {
    EXPECT_EQ(logIn(greeting + password_prompt + accepted), 0);
    EXPECT_EQ(peer->received(), "user admin\r\nAdm1n secret\r\n");
    EXPECT_TRUE(server_session.peer_is_root);
}

TEST_F(CliLogin, sends_a_password_of_255_characters) {
    const std::string password(255, 'p');
    set_text(install_profiles[os_kind].admin_password, password);
    EXPECT_EQ(logIn(greeting + password_prompt + accepted), 0);
    EXPECT_EQ(peer->received(), "user admin\r\n" + password + "\r\n");
}

TEST_F(CliLogin, depends_on_the_answer_to_the_password_alone) {
    EXPECT_EQ(logIn(greeting + password_prompt + refused), 1);
    EXPECT_EQ(peer->received(), "user admin\r\nAdm1n secret\r\n");
    EXPECT_EQ(logIn(greeting + refused + accepted), 0);
    EXPECT_EQ(logIn(greeting + accepted + accepted), 0);
    EXPECT_EQ(logIn(greeting + accepted + refused), 1);
    EXPECT_EQ(logIn(""), 1);
}

TEST_F(CliLogin, goes_on_after_a_greeting_that_cannot_be_read) {
    const std::string too_long(256, 'x');
    EXPECT_EQ(logIn(too_long + password_prompt + accepted), 0);
    EXPECT_EQ(peer->received(), "user admin\r\nAdm1n secret\r\n");
}

TEST_F(CliLogin, gives_up_after_two_seconds_when_nobody_has_the_other_end) {
    serve(greeting + password_prompt + accepted);
    waits.atSocket = [this] {
        peer->serve();
        peer->hangUp();
    };
    EXPECT_EQ(cli_login(), 1);
    EXPECT_EQ(waits.sleeps, (std::vector<int>{2, 1, 1}));
    EXPECT_FALSE(server_session.socket.isOpen());
    EXPECT_FALSE(server_session.peer_is_root);
}

TEST_F(CliLogin, waits_two_seconds_before_it_connects_when_the_process_id_is_known) {
    serve("");
    bool connected_before = false;
    waits.inSleep = [&] { connected_before = peer->hasClient(); };
    EXPECT_EQ(cli_connect(), 0);
    EXPECT_TRUE(peer->hasClient());
    EXPECT_FALSE(connected_before);
    EXPECT_EQ(waits.sleeps, before_connecting);
}

TEST_F(CliLogin, resolves_a_host_name) {
    set_text(server_session.cli_host, "localhost");
    EXPECT_EQ(logIn(greeting + password_prompt + accepted), 0);
}

TEST_F(CliLogin, tries_to_connect_once_and_leaves_no_socket_when_nobody_listens) {
    serve("");
    peer->stopListening();
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
    EXPECT_EQ(logIn(greeting + password_prompt + accepted), 1);
    EXPECT_EQ(waits.sleeps, (std::vector<int>{1, 1, 1, 1}));
    EXPECT_FALSE(peer->hasClient());
}

TEST_F(CliLogin, goes_on_as_soon_as_the_pid_file_tells_the_process_id) {
    server_session.pid = 0;
    waits.inSleep = [&] {
        if (waits.sleeps.size() == 2) write_file(directory / "teluma.pid", "4711\n");
    };
    EXPECT_EQ(logIn(greeting + password_prompt + accepted), 0);
    EXPECT_EQ(waits.sleeps, (std::vector<int>{1, 1, 2}));
    EXPECT_EQ(server_session.pid, 4711);
}

}  // namespace
