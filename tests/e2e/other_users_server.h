#pragma once

#include <sys/types.h>

#include <string>

#include "tests/support/descriptor.h"

/// A user of the host without any rights, who waits until the port of the command-line interface is
/// free, listens there, greets whoever connects and accepts every command.
class OtherUsersServer {
  public:
    /// For sockets of AF_INET, at 127.0.0.1, or AF_INET6, at every address of either kind. Skips
    /// the test where there are no other users.
    explicit OtherUsersServer(int family);
    ~OtherUsersServer();
    OtherUsersServer(const OtherUsersServer&) = delete;
    OtherUsersServer& operator=(const OtherUsersServer&) = delete;

    void waitUntilListening();

    /// Everything that it has been sent.
    std::string received();

  private:
    void hear();

    pid_t process;
    Descriptor told;
    std::string bytes;
};
