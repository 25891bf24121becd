#include "connection.h"

#include <sys/socket.h>

#include <cerrno>
#include <utility>

namespace {

/// Room for the longest command with a long path in it, and then some.
const std::size_t longest_line = 4096;

bool is_passing(int reason) { return reason == EAGAIN || reason == EWOULDBLOCK || reason == EINTR; }

}  // namespace

Connection::Connection(Descriptor client, std::string client_name, Store& store)
    : session(store), socket(std::move(client)), name(std::move(client_name)) {}

bool Connection::receive() {
    char buffer[4096];
    const ssize_t count = recv(socket.get(), buffer, sizeof buffer, 0);
    if (count > 0) received.append(buffer, static_cast<std::size_t>(count));
    return count > 0 || (count < 0 && is_passing(errno));
}

std::optional<std::string> Connection::nextLine() {
    const std::size_t end = received.find("\r\n");
    if (closing || end == std::string::npos) return std::nullopt;
    std::string line = received.substr(0, end);
    received.erase(0, end + 2);
    return line;
}

bool Connection::sendsTooMuch() const { return received.size() > longest_line; }

void Connection::send(Delivery delivery, Clock::time_point now) {
    closing = closing || delivery.then_close;
    if (delivery.bytes.empty()) return;
    if (deliveries.empty()) nextDue = now + delivery.wait;
    deliveries.push_back(std::move(delivery));
}

bool Connection::flush(Clock::time_point now) {
    while (wantsToWrite(now)) {
        errno = 0;
        if (!writeSome(now)) return is_passing(errno);
    }
    return !(closing && deliveries.empty());
}

std::optional<Clock::time_point> Connection::due() const {
    return deliveries.empty() ? std::nullopt : std::optional(nextDue);
}

bool Connection::wantsToWrite(Clock::time_point now) const {
    return !deliveries.empty() && nextDue <= now;
}

bool Connection::writeSome(Clock::time_point now) {
    const Delivery& delivery = deliveries.front();
    const bool one_by_one = delivery.gap > Clock::duration::zero();
    const std::size_t most = one_by_one ? 1 : delivery.bytes.size() - written;
    const ssize_t count = ::send(socket.get(), delivery.bytes.data() + written, most, MSG_NOSIGNAL);
    if (count < 0) return false;
    written += static_cast<std::size_t>(count);
    nextDue = now + delivery.gap;
    if (written == delivery.bytes.size()) {
        deliveries.pop_front();
        written = 0;
        if (!deliveries.empty()) nextDue = now + deliveries.front().wait;
    }
    return true;
}
