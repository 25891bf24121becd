#pragma once

#include <chrono>
#include <string>

#include "fault_rules.h"

using Clock = std::chrono::steady_clock;

/// `seconds` on the server's clock.
Clock::duration as_duration(double seconds);

/// What a client is sent for one event.
struct Delivery {
    std::string bytes;
    Clock::duration wait{};  ///< before the first byte
    Clock::duration gap{};   ///< between two bytes; zero: all at once
    bool then_close = false;
};

/// True when the event goes on as it should and only its reply suffers; false when it must not be
/// carried out.
bool is_carried_out(FaultKind kind);

/// What becomes of `reply` under `fault`. `prompt` is the session's prompt.
Delivery deliver(const Fault& fault, const std::string& reply, const std::string& prompt);

/// `count` bytes that look random and are the same every time: control characters, terminal escape
/// sequences, NULs and bytes above 127 among them, but no CR, line feed or ">", so that a reader
/// finds neither an end of line nor a prompt in them.
std::string garbage_bytes(std::size_t count);
