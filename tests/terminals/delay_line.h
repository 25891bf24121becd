#pragma once

#include <chrono>
#include <deque>
#include <string>

/// One direction of a line between a terminal and a program: bytes come out in their order, each
/// some time after it went in, and no faster than the line's speed.
class DelayLine {
  public:
    using Clock = std::chrono::steady_clock;

    /// `delay` is how long a byte is on its way, `byte_time` how long the line is busy with it.
    DelayLine(Clock::duration delay, Clock::duration byte_time)
        : delay(delay), byte_time(byte_time) {}

    void put(const std::string& bytes, Clock::time_point now);

    /// What has arrived since the last call.
    std::string take(Clock::time_point now);

    bool isEmpty() const { return under_way.empty(); }

    /// When the next byte arrives; the line must not be empty.
    Clock::time_point nextArrival() const { return under_way.front().arrival; }

  private:
    struct Byte {
        Clock::time_point arrival;
        char value;
    };

    Clock::duration delay;
    Clock::duration byte_time;
    Clock::time_point last_arrival;
    std::deque<Byte> under_way;
};
