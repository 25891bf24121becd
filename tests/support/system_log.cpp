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

int new_socket() {
    return checked(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0), "socket");
}

}  // namespace

SystemLog::SystemLog() : socket(new_socket()) {
    checked(bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address),
            "bind");
}

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
