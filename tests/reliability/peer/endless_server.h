#pragma once

#include <string>
#include <thread>

#include "tests/support/descriptor.h"
#include "tests/support/local_port.h"

/// What a server never stops saying.
struct EndlessAnswer {
    std::string name;     // for the names of tests
    std::string command;  // at which it begins: one that begins so; empty: the greeting
    std::string start;    // once
    std::string repeated;
};

/// A server at the port that the sample configuration names. It agrees to every command but one,
/// to which its answer does not end before the connection does. It serves one client.
class EndlessServer {
  public:
    explicit EndlessServer(EndlessAnswer endless);
    ~EndlessServer();
    EndlessServer(const EndlessServer&) = delete;
    EndlessServer& operator=(const EndlessServer&) = delete;

  private:
    void serve();
    bool answer(const std::string& command);
    bool talk() const;

    const EndlessAnswer endless;
    LocalPort port;
    Pipe end;  // closed at this side: there is nobody to wait for any more
    Descriptor client;
    std::thread server;
};
