#include "tests/support/deadline.h"

#include <algorithm>
#include <cstdlib>

std::chrono::milliseconds patience() {
    constexpr double seconds = 30;
    const char* factor_text = std::getenv("TELUMA_TEST_PATIENCE");
    const double factor = factor_text == nullptr ? 1 : std::strtod(factor_text, nullptr);
    return std::chrono::milliseconds(
        static_cast<long long>(seconds * 1000 * (factor > 0 ? factor : 1)));
}

Deadline::Deadline(std::chrono::milliseconds from_now)
    : end(std::chrono::steady_clock::now() + from_now) {}

bool Deadline::passed() const {
    return std::chrono::steady_clock::now() >= end;
}

int Deadline::millisecondsLeft(int most) const {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        end - std::chrono::steady_clock::now());
    return static_cast<int>(std::clamp<long long>(left.count(), 0, most));
}
