#include "delivery.h"

#include <random>

Clock::duration as_duration(double seconds) {
    return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

bool is_carried_out(FaultKind kind) {
    return kind == FaultKind::none || kind == FaultKind::late || kind == FaultKind::dribble ||
           kind == FaultKind::overlong;
}

Delivery deliver(const Fault& fault, const std::string& reply, const std::string& prompt) {
    const auto size = static_cast<std::size_t>(fault.amount);
    switch (fault.kind) {
        case FaultKind::close:
            return {"", {}, {}, true};
        case FaultKind::silent:
            return {};
        case FaultKind::late:
            return {reply, as_duration(fault.amount)};
        case FaultKind::dribble:
            return {reply, {}, as_duration(fault.amount)};
        case FaultKind::overlong:
            return {std::string(size, 'x') + "\r\n" + reply};
        case FaultKind::garbage:
            return {garbage_bytes(size)};
        case FaultKind::garbage_prompt:
            return {garbage_bytes(size) + "\r\n" + prompt};
        default:
            return {reply};
    }
}

std::string garbage_bytes(std::size_t count) {
    std::string bytes = "\x1b[2J\x1b[7;31m\x1b]0;garbage\a\x1b(0\b\b\v\f";
    bytes += '\0';
    std::minstd_rand random(9091);
    while (bytes.size() < count) {
        const char byte = static_cast<char>(random() >> 8U);
        if (byte != '\r' && byte != '\n' && byte != '>') bytes += byte;
    }
    bytes.resize(count);
    return bytes;
}
