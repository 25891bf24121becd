#include "tests/terminals/delay_line.h"

#include <algorithm>

void DelayLine::put(const std::string& bytes, Clock::time_point now) {
    for (const char value : bytes) {
        last_arrival = std::max(now + delay, last_arrival) + byte_time;
        under_way.push_back({last_arrival, value});
    }
}

std::string DelayLine::take(Clock::time_point now) {
    std::string arrived;
    while (!isEmpty() && nextArrival() <= now) {
        arrived += under_way.front().value;
        under_way.pop_front();
    }
    return arrived;
}
