#include "tests/support/key_waits.h"

#include <gtest/gtest.h>

#include <utility>

KeyWaits::~KeyWaits() {
    EXPECT_TRUE(pieces.empty()) << pieces.size() << " pieces of the test got no wait";
}

KeyWaits& KeyWaits::then(std::function<void()> piece) {
    pieces.push_back(std::move(piece));
    if (!atKey)
        atKey = [this] { runNext(); };
    return *this;
}

void KeyWaits::runNext() {
    const std::function<void()> piece = std::move(pieces.front());
    pieces.pop_front();
    piece();
    if (pieces.empty())
        atKey = nullptr;
}
