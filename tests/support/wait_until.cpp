#include "tests/support/wait_until.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

void stop_test(const Caller& caller, const std::string& message) {
    ADD_FAILURE_AT(caller.file, caller.line) << message;
    throw testing::AssertionException(testing::TestPartResult(
        testing::TestPartResult::kFatalFailure, caller.file, caller.line, message.c_str()));
}

std::chrono::milliseconds patience() {
    const char* text = std::getenv("TELUMA_TEST_PATIENCE");
    const double factor = text == nullptr ? 1 : std::strtod(text, nullptr);
    return std::chrono::milliseconds(std::lround(30000 * (factor > 0 ? factor : 1)));
}

int Deadline::millisecondsLeft(int most) const {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    return static_cast<int>(std::clamp<long long>(left.count(), 0, most));
}
