#include "tests/ui/at_waits.h"

#include <gtest/gtest.h>

#include <csignal>
#include <utility>

#include "wizard/signal_gate.h"

namespace {

AtWaits* current = nullptr;

}  // namespace

AtWaits::AtWaits() {
    current = this;
    hold_signal(SIGWINCH, runNext);
}

AtWaits::~AtWaits() {
    EXPECT_TRUE(pieces.empty()) << pieces.size() << " pieces of the test got no wait";
    pieces.clear();
    // A signal that no wait has let in must not be left to the next test.
    let_signals_in();
}

AtWaits& AtWaits::then(std::function<void()> piece) {
    pieces.push_back(std::move(piece));
    std::raise(SIGWINCH);
    return *this;
}

void AtWaits::runNext(int /*signal_number*/) {
    if (current->pieces.empty())
        return;
    const std::function<void()> piece = std::move(current->pieces.front());
    current->pieces.pop_front();
    if (!current->pieces.empty())
        std::raise(SIGWINCH);
    piece();
}
