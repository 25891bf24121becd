#pragma once

#include <poll.h>

#include <optional>
#include <vector>

#include "delivery.h"
#include "wizard/base/descriptor.h"

/// Splits the process in two. In the new one, the leader of a session of its own, returns nothing;
/// it goes on and must call daemon_is_ready() with `ready`. In the old one waits for that call and
/// returns the exit status: 0 when it came, 1 when the new process ended without it or there could
/// be none.
std::optional<int> become_daemon(Descriptor& ready);

/// Cuts the daemon off from the terminal (standard streams to /dev/null, current directory "/") and
/// lets the process that started it end. Until then it can still report errors there.
void daemon_is_ready(Descriptor& ready);

/// Makes SIGTERM and SIGINT ask the server to stop. From now on they are held back everywhere but
/// in wait_for_events(), so that none is missed and none interrupts anything.
void catch_stop_signals();

/// True once such a signal has arrived in wait_for_events().
bool stop_requested();

/// Waits until one of `descriptors` is ready, `until` (if there is one) has come or a signal has
/// arrived; fills in their `revents`.
void wait_for_events(std::vector<pollfd>& descriptors,
                     const std::optional<Clock::time_point>& until);
