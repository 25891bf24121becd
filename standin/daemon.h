#pragma once

#include <optional>

#include "wizard/system/descriptor.h"

namespace standin {

/// Splits the process in two. In the new one, the leader of a session of its own, returns nothing;
/// it goes on and must call daemon_is_ready() with `ready`. In the old one waits for that call and
/// returns the exit status: 0 when it came, 1 when the new process ended without it or there could
/// be none.
std::optional<int> become_daemon(Descriptor& ready);

/// Cuts the daemon off from the terminal (standard streams to /dev/null, current directory "/") and
/// lets the process that started it end. Until then it can still report errors there.
void daemon_is_ready(Descriptor& ready);

}  // namespace standin
