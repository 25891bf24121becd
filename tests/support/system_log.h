#pragma once

#include <string>
#include <vector>

#include "tests/support/descriptor.h"

/// The sandbox's system log: whatever is logged while one exists comes to it.
class SystemLog {
  public:
    SystemLog();
    ~SystemLog();

    /// The messages so far: "<PRIORITY>" and, without the time, "IDENTITY: TEXT".
    std::vector<std::string> messages();

    /// Logs until a further message would have to wait for messages().
    void fill();

  private:
    Descriptor socket;
    std::vector<std::string> received;
};

/// One that takes connections, but no more of them: who opens it waits while the result lives.
Descriptor stuck_system_log();
