#include "tests/support/system_log.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

constexpr const char* path = "/dev/log";
const sockaddr_un address = {AF_UNIX, "/dev/log"};

// syslog(3) puts the time between priority and identity.
std::string without_time(std::string message) {
    return message.erase(message.find('>') + 1, std::strlen("Nov 21 00:00:00 "));
}

using Call = int(int, const sockaddr*, socklen_t);

int at_log(Call call, const Descriptor& socket) {
    return call(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

int new_socket(int type = SOCK_DGRAM) {
    return checked(socket(AF_UNIX, type | SOCK_CLOEXEC | SOCK_NONBLOCK, 0), "socket");
}

}  // namespace

SystemLog::SystemLog() : socket(new_socket()) { checked(at_log(bind, socket), "bind"); }

SystemLog::~SystemLog() { unlink(path); }

std::vector<std::string> SystemLog::messages() {
    char message[1024];
    ssize_t length = 0;
    while ((length = recv(socket.get(), message, sizeof message, 0)) >= 0)
        received.push_back(without_time(std::string(message, static_cast<size_t>(length))));
    return received;
}

void SystemLog::fill() {
    const Descriptor sender(new_socket());
    const std::string text = "full";
    while (sendto(sender.get(), text.data(), text.size(), 0,
                  reinterpret_cast<const sockaddr*>(&address), sizeof address) != -1) {
    }
    EXPECT_EQ(errno, EAGAIN);
}

Descriptor stuck_system_log() {
    Descriptor socket(new_socket(SOCK_STREAM));
    checked(at_log(bind, socket), "bind");
    checked(listen(socket.get(), 0), "listen");
    // A connection that is closed before it was accepted still takes its place.
    while (at_log(connect, Descriptor(new_socket(SOCK_STREAM))) == 0) continue;
    EXPECT_EQ(errno, EAGAIN);
    return socket;
}
