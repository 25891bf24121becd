#include "tests/wizard/key_waits.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/wizard/replaced_calls.h"

KeyWaits::KeyWaits() {
    replaced_calls.before_key_wait = [this] { runNext(); };
}

KeyWaits::~KeyWaits() {
    EXPECT_TRUE(pieces.empty()) << pieces.size() << " pieces of the test got no wait";
    replaced_calls.before_key_wait = nullptr;
}

void KeyWaits::then(std::function<void()> piece) {
    pieces.push_back(std::move(piece));
}

void KeyWaits::runNext() {
    if (pieces.empty())
        return;
    const std::function<void()> piece = std::move(pieces.front());
    pieces.pop_front();
    piece();
}
