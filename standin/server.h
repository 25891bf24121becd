#pragma once

#include <poll.h>

#include <list>
#include <optional>
#include <string>
#include <vector>

#include "connection.h"
#include "fault_book.h"
#include "store.h"
#include "wizard/base/descriptor.h"

/// Serves any number of clients of the command line interface at the same time.
class Server {
  public:
    /// Takes over `listening`; a closed one means that no client ever comes. The others must
    /// outlive the server.
    Server(Descriptor listening, Store& shared, FaultBook& fault_book,
           const CommandLog& command_log);

    /// Answers clients until a stop signal arrives. When there is a `pid_due`, writes the pid file
    /// to `pid_path` at that time.
    void run(const std::string& pid_path, std::optional<Clock::time_point> pid_due);

  private:
    std::vector<pollfd> awaited(Clock::time_point now) const;
    std::optional<Clock::time_point> nextDue(Clock::time_point now) const;
    void serveClients(const std::vector<pollfd>& ready);
    bool serve(Connection& connection, bool readable);
    void acceptClient();
    std::list<Connection>::iterator drop(std::list<Connection>::iterator connection);
    void handle(Connection& connection, Event event, const std::string& line);

    Store& store;
    FaultBook& faults;
    const CommandLog& log;
    std::list<Connection> connections;
    int accepted = 0;
    Descriptor listener;  ///< the last member, to be closed before the clients can notice the end
};
