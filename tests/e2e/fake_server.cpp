#include "tests/e2e/fake_server.h"

#include <fcntl.h>
#include <grp.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <ctime>
#include <utility>

#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/wait_until.h"

namespace {

constexpr const char* heard_file = "/run/scratch/heard";

int listener_of(int family) {
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

// Whether the client is still there.
bool say(int client, const std::string& bytes) {
    return send(client, bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(bytes.size());
}

void answer(int client, const std::string& command, const EndlessReply& endless) {
    const std::string start = command.substr(0, endless.command.size());
    if (endless.repeated.empty() || start != endless.command) {
        say(client, command.empty() ? "TELUMA\r\nlogin> " : "+OK: done\r\nserver> ");
        return;
    }
    std::string block;
    while (block.size() < 4096) block += endless.repeated;
    for (bool listens = say(client, endless.start); listens;) listens = say(client, block);
}

[[noreturn]] void serve(int listener, const EndlessReply& endless) {
    const int heard = checked(open(heard_file, O_WRONLY | O_CREAT | O_CLOEXEC, 0644), "open");
    for (;;) {
        const Descriptor client(checked(accept(listener, nullptr, nullptr), "accept"));
        answer(client.get(), "", endless);
        std::string command;
        char byte = 0;
        while (read(client.get(), &byte, 1) == 1) {
            checked(static_cast<int>(write(heard, &byte, 1)), "write");
            command += byte;
            if (byte == '\n') answer(client.get(), std::exchange(command, ""), endless);
        }
    }
}

}  // namespace

FakeServer::FakeServer(uid_t user, int family, const EndlessReply& endless)
    : process(checked(fork(), "fork")) {
    if (process != 0) return;
    if (user != 0) {
        checked(setgroups(0, nullptr), "setgroups");
        checked(setgid(user), "setgid");
        checked(setuid(user), "setuid");
    }
    serve(listener_of(family), endless);
}

FakeServer::~FakeServer() {
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
}

void FakeServer::waitUntilListening() {
    wait_until([] { return exists(heard_file); }, "it listened");
}

std::string FakeServer::heard() { return read_file(heard_file); }
