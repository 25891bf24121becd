#include "tests/e2e/other_users_server.h"

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <ctime>

#include "tests/support/wait_until.h"

namespace {

constexpr uid_t other_user = 12;
constexpr in_port_t cli_port = 9091;
const std::string listening = "listening\n";

int open_listener(int family) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(cli_port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    sockaddr_in6 wide_address{};
    wide_address.sin6_family = AF_INET6;
    wide_address.sin6_port = htons(cli_port);
    const bool is_wide = family == AF_INET6;
    const int listener = checked(socket(family, SOCK_STREAM, 0), "socket");
    const int on = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    const timespec moment{0, 1000000};
    while (bind(listener,
                is_wide ? reinterpret_cast<const sockaddr*>(&wide_address)
                        : reinterpret_cast<const sockaddr*>(&address),
                is_wide ? sizeof wide_address : sizeof address) == -1 ||
           listen(listener, 1) == -1)
        nanosleep(&moment, nullptr);
    return listener;
}

void say(int descriptor, const std::string& text) {
    checked(static_cast<int>(write(descriptor, text.data(), text.size())), "write");
}

void serve(int family, int report) {
    const int listener = open_listener(family);
    say(report, listening);
    for (;;) {
        const Descriptor client(checked(accept(listener, nullptr, nullptr), "accept"));
        say(client.get(), "TELUMA\r\nlogin> ");
        char byte = 0;
        while (read(client.get(), &byte, 1) == 1) {
            say(report, std::string(1, byte));
            if (byte == '\n')
                say(client.get(), "+OK: done\r\nserver> ");
        }
    }
}

void become_other_user() {
    checked(setgroups(0, nullptr), "setgroups");
    checked(setgid(other_user), "setgid");
    checked(setuid(other_user), "setuid");
}

}  // namespace

OtherUsersServer::OtherUsersServer(int family) {
    Pipe pipe = make_pipe();
    process = checked(fork(), "fork");
    if (process == 0) {
        become_other_user();
        serve(family, pipe.write_end.get());
    }
    told = std::move(pipe.read_end);
    fcntl(told.get(), F_SETFL, O_NONBLOCK);
}

OtherUsersServer::~OtherUsersServer() {
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
}

void OtherUsersServer::hear() {
    char piece[4096];
    ssize_t length = 0;
    while ((length = read(told.get(), piece, sizeof piece)) > 0)
        bytes.append(piece, static_cast<size_t>(length));
}

void OtherUsersServer::waitUntilListening() {
    wait_until(
        [this] {
            hear();
            return bytes.compare(0, listening.size(), listening) == 0;
        },
        "the other user listened");
}

std::string OtherUsersServer::received() {
    waitUntilListening();
    hear();
    return bytes.substr(listening.size());
}
