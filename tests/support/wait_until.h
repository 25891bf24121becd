#pragma once

#include <string>
#include <thread>

#include "tests/support/caller.h"
#include "tests/support/deadline.h"

/// Waits until `condition()` is true, for what no descriptor tells of (a file that appears, a
/// process that goes). When patience() is over the test ends as failed with `description`.
template <class Condition>
void wait_until(Condition condition, const std::string& description,
                const Caller& caller = Caller::here()) {
    const Deadline deadline;
    while (!condition()) {
        if (deadline.passed())
            stop_test(caller, "waited in vain until " + description);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}
