#include "tests/support/cli_client.h"

#include <poll.h>
#include <sys/socket.h>

#include <climits>
#include <utility>

#include "tests/support/local_port.h"
#include "tests/support/wait_until.h"

CliClient::CliClient(int port) : socket(connection_to(port)) {}

void CliClient::send(const std::string& bytes) const {
    const ssize_t sent = ::send(socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    checked(static_cast<int>(sent), "send");
}

template <class Condition>
std::string CliClient::readUntil(Condition condition) {
    while (!condition()) {
        if (!receive()) stop_test(Caller::here(), "the connection ended after: " + received);
    }
    return std::exchange(received, {});
}

std::string CliClient::readReply() {
    return readUntil([this] {
        return received.size() >= 2 && received.compare(received.size() - 2, 2, "> ") == 0;
    });
}

std::string CliClient::readBytes(std::size_t count) {
    return readUntil([&] { return received.size() >= count; });
}

std::string CliClient::readToEnd() {
    while (receive()) {
    }
    return std::exchange(received, {});
}

std::string CliClient::say(const std::string& line) {
    sendLine(line);
    return readReply();
}

std::string CliClient::logIn(const std::string& password) {
    readReply();
    say("user admin");
    return say(password);
}

bool CliClient::nothingCame() const {
    char byte = 0;
    return received.empty() && recv(socket.get(), &byte, 1, MSG_PEEK | MSG_DONTWAIT) < 0;
}

/// Waits for more. False at the end of the connection.
bool CliClient::receive() {
    const Deadline deadline;
    pollfd waiting{socket.get(), POLLIN, 0};
    if (poll(&waiting, 1, deadline.millisecondsLeft(INT_MAX)) <= 0)
        stop_test(Caller::here(), "nothing came any more after: " + received);
    char buffer[65536];
    const ssize_t count = recv(socket.get(), buffer, sizeof buffer, 0);
    received.append(buffer, count > 0 ? static_cast<std::size_t>(count) : 0);
    return count > 0;
}
