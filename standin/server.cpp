#include "server.h"

#include <algorithm>
#include <csignal>
#include <utility>

#include "address.h"
#include "daemon.h"

namespace {

using MaybeTime = std::optional<Clock::time_point>;

MaybeTime earlier(MaybeTime one, MaybeTime other) {
    return one && other ? std::min(one, other) : std::max(one, other);
}

}  // namespace

Server::Server(Descriptor listening, Store& shared, FaultBook& fault_book,
               const CommandLog& command_log)
    : store(shared), faults(fault_book), log(command_log), listener(std::move(listening)) {}

void Server::run(const std::string& pid_path, std::optional<Clock::time_point> pid_due) {
    while (!stop_requested()) {
        const Clock::time_point now = Clock::now();
        if (pid_due && *pid_due <= now) {
            write_pid_file(pid_path);
            pid_due.reset();
        }
        std::vector<pollfd> descriptors = awaited(now);
        wait_for_events(descriptors, earlier(nextDue(now), pid_due));
        serveClients(descriptors);
        if (descriptors[0].revents != 0) acceptClient();
    }
}

/// The listener first, then the connections in their order. Bytes that are due at `now` wait for
/// their socket; later ones wait for the clock.
std::vector<pollfd> Server::awaited(Clock::time_point now) const {
    std::vector<pollfd> descriptors = {{listener.get(), POLLIN, 0}};
    for (const Connection& connection : connections) {
        const int events = POLLIN | (connection.wantsToWrite(now) ? POLLOUT : 0);
        descriptors.push_back({connection.descriptor(), static_cast<short>(events), 0});
    }
    return descriptors;
}

std::optional<Clock::time_point> Server::nextDue(Clock::time_point now) const {
    std::optional<Clock::time_point> first;
    for (const Connection& connection : connections) {
        if (!connection.wantsToWrite(now)) first = earlier(first, connection.due());
    }
    return first;
}

void Server::serveClients(const std::vector<pollfd>& ready) {
    std::size_t index = 0;
    for (auto at = connections.begin(); at != connections.end();) {
        ++index;
        if (serve(*at, ready[index].revents != 0)) {
            ++at;
        } else {
            at = drop(at);
        }
    }
}

/// False when the connection is at its end.
bool Server::serve(Connection& connection, bool readable) {
    const bool goes_on = !readable || connection.receive();
    while (const std::optional<std::string> line = connection.nextLine()) {
        log.command(*line);
        handle(connection, connection.session.expectsPassword() ? Event::password : Event::command,
               *line);
    }
    return connection.flush(Clock::now()) && goes_on && !connection.sendsTooMuch();
}

void Server::acceptClient() {
    Descriptor socket = accept_client(listener);
    if (!socket.isOpen()) return;
    const std::string name = "connection " + std::to_string(++accepted);
    log.note(name + " opened");
    connections.emplace_back(std::move(socket), name, store);
    const auto newest = std::prev(connections.end());
    handle(*newest, Event::connect, {});
    if (!newest->flush(Clock::now())) drop(newest);
}

std::list<Connection>::iterator Server::drop(std::list<Connection>::iterator connection) {
    log.note(connection->getName() + " closed");
    return connections.erase(connection);
}

/// Lets the session answer, and the faults spoil the answer.
void Server::handle(Connection& connection, Event event, const std::string& line) {
    Session& session = connection.session;
    const Fault fault = faults.at(event, line);
    std::string reply;
    if (fault.kind == FaultKind::crash) {
        std::raise(SIGKILL);
    } else if (fault.kind == FaultKind::refuse) {
        reply = session.refuse("not now");
    } else if (is_carried_out(fault.kind)) {
        reply = event == Event::connect ? session.greeting() : session.answer(line);
    }
    Delivery delivery = deliver(fault, reply, session.prompt());
    delivery.then_close |= event == Event::connect && fault.kind == FaultKind::refuse;
    connection.send(std::move(delivery), Clock::now());
}
