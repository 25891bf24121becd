#pragma once

#include <sys/types.h>

#include <string>

/// What a server says that never stops: `start` once, then `repeated` again and again.
struct EndlessReply {
    std::string name = {};
    std::string command = {};  // whose reply it is: one that begins so; empty: the greeting
    std::string start = {};
    std::string repeated = {};
};

/// A process of a user's that waits until the port of the command-line interface is free, listens
/// there, greets whoever connects and agrees to every command, but for one that it may answer
/// without end. The scratch directory has to be the user's.
class FakeServer {
  public:
    /// For sockets of AF_INET, at 127.0.0.1, or AF_INET6, at every address of either kind.
    FakeServer(uid_t user, int family, const EndlessReply& endless = {});
    ~FakeServer();
    FakeServer(const FakeServer&) = delete;
    FakeServer& operator=(const FakeServer&) = delete;

    static void waitUntilListening();

    /// Everything that it has been sent, once it listens.
    static std::string heard();

  private:
    pid_t process;
};
