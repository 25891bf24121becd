#pragma once

#include <poll.h>

#include <optional>
#include <vector>

#include "delivery.h"

namespace standin {

/// Makes SIGTERM and SIGINT ask the server to stop. From now on they are held back everywhere but
/// in wait_for_events(), so that none is missed and none interrupts anything.
void catch_stop_signals();

/// True once such a signal has arrived in wait_for_events().
bool stop_requested();

/// Waits until one of `descriptors` is ready, `until` (if there is one) has come or a signal has
/// arrived; fills in their `revents`.
void wait_for_events(std::vector<pollfd>& descriptors,
                     const std::optional<Clock::time_point>& until);

}  // namespace standin
