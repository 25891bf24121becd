#pragma once

#include <optional>

#include "tests/support/local_port.h"

/// A port that one of the scenes expects some program to have.
constexpr int port_in_use = 8080;

/// The port of POP3, at which a busy program lets everybody wait until it ends.
constexpr int port_of_busy_program = 110;

/// The programs that have ports of the host while the demonstration runs.
class OtherPrograms {
  public:
    OtherPrograms() { other.open(); }

    /// Who waits at its port is refused from then on.
    void endBusyOne() { busy.reset(); }

  private:
    LocalPort other{port_in_use};
    std::optional<SilentPort> busy{port_of_busy_program};
};
