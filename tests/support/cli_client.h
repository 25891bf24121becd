#pragma once

#include <string>

#include "tests/support/descriptor.h"

/// A client of the command line interface on 127.0.0.1. A wait in vain ends the test as failed.
class CliClient {
  public:
    /// Connects. Throws std::system_error when nobody listens.
    explicit CliClient(int port);

    /// Sends bytes as they are, or a line with its CR LF.
    void send(const std::string& bytes) const;
    void sendLine(const std::string& line) const { send(line + "\r\n"); }

    /// Waits until what has come in ends with a prompt, and takes it.
    std::string readReply();

    /// Waits until at least `count` bytes have come in, and takes them all.
    std::string readBytes(std::size_t count);

    /// Waits for the end of the connection and takes what came before it.
    std::string readToEnd();

    /// Sends a line and takes the reply.
    std::string say(const std::string& line);

    /// Takes the greeting and logs in as the administrator. Returns the reply to the password.
    std::string logIn(const std::string& password);

    /// True when nothing has come in that was not taken.
    bool nothingCame() const;

  private:
    template <class Condition>
    std::string readUntil(Condition condition);
    bool receive();

    Descriptor socket;
    std::string received;
};
