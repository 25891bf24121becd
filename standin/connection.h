#pragma once

#include <deque>
#include <optional>
#include <string>

#include "delivery.h"
#include "session.h"
#include "wizard/base/descriptor.h"

/// One client: its socket, its session, what it has sent and what it is still to be sent. Nothing
/// here blocks.
class Connection {
  public:
    /// Takes over `socket`, which must be in non-blocking mode. `name` is for the log. `store` must
    /// outlive the connection.
    Connection(Descriptor socket, std::string name, Store& store);

    /// Reads what has come in. False when the client has closed or the connection is broken.
    bool receive();

    /// Takes the next whole line out of what has come in, without its CR LF. A line ends at CR LF
    /// only. Nothing when there is none, or once the connection is to be closed.
    std::optional<std::string> nextLine();

    /// True when the client sends a line that is longer than any command can be.
    bool sendsTooMuch() const;

    /// Sends `delivery` after all that is still to be sent; its first wait begins when that is out.
    void send(Delivery delivery, Clock::time_point now);

    /// Writes what is due at `now`. False when the connection is broken or at its end.
    bool flush(Clock::time_point now);

    /// When flush() has to be called next; nothing while there is nothing to be sent.
    std::optional<Clock::time_point> due() const;

    /// True when bytes are due at `now` and only wait for the socket.
    bool wantsToWrite(Clock::time_point now) const;

    int descriptor() const { return socket.get(); }
    const std::string& getName() const { return name; }

    Session session;

  private:
    bool writeSome(Clock::time_point now);

    Descriptor socket;
    std::string name;
    std::string received;
    std::deque<Delivery> deliveries;
    std::size_t written = 0;    ///< bytes of the first delivery
    Clock::time_point nextDue;  ///< of the first delivery's next byte
    bool closing = false;       ///< when all deliveries are written
};
