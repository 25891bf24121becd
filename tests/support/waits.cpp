#include "tests/support/waits.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/select.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <utility>

namespace {

Waits* waits_in_hand = nullptr;

/// The C library's own function of this name.
template <class Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

auto* const real_pselect = real<decltype(pselect)>("pselect");
auto* const real_ppoll = real<int(pollfd*, nfds_t, const timespec*, const sigset_t*)>("ppoll");

void tell(const std::function<void()>& listener) {
    if (listener) listener();
}

int sleep_in_hand(const timespec& time, const sigset_t* mask) {
    const double seconds =
        static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    waits_in_hand->sleeps.push_back(static_cast<int>(std::lround(seconds)));
    tell(waits_in_hand->inSleep);
    const timespec shorter = {0, std::lround(seconds * 1e6)};
    return real_pselect(0, nullptr, nullptr, nullptr, &shorter, mask);
}

int key_wait_in_hand(pollfd* keyboard, const sigset_t* mask) {
    // What is called may put something else in its place.
    const std::function<void()> listener = waits_in_hand->atKey;
    listener();
    const timespec at_once = {};
    const int result = real_ppoll(keyboard, 1, &at_once, mask);
    if (result != 0) return result;
    errno = EINTR;
    return -1;
}

}  // namespace

Waits::Waits() { waits_in_hand = this; }

Waits::~Waits() { waits_in_hand = nullptr; }

KeyWaits::~KeyWaits() {
    EXPECT_TRUE(pieces.empty()) << pieces.size() << " pieces of the test got no wait";
}

KeyWaits& KeyWaits::then(std::function<void()> piece) {
    pieces.push_back(std::move(piece));
    if (!atKey) atKey = [this] { runNext(); };
    return *this;
}

void KeyWaits::runNext() {
    const std::function<void()> piece = std::move(pieces.front());
    pieces.pop_front();
    piece();
    if (pieces.empty()) atKey = nullptr;
}

// In the place of the C library's.
extern "C" int pselect(int count, fd_set* readable, fd_set* writable, fd_set* exceptional,
                       const timespec* time, const sigset_t* mask) {
    if (waits_in_hand != nullptr && time != nullptr) return sleep_in_hand(*time, mask);
    return real_pselect(count, readable, writable, exceptional, time, mask);
}

// Under a name of its own, since the C library's declaration says that ppoll() only writes into
// what it is given.
extern "C" int ppoll_in_hand(pollfd* descriptors, nfds_t count, const timespec* time,
                             const sigset_t* mask) __asm__("ppoll");

int ppoll_in_hand(pollfd* descriptors, nfds_t count, const timespec* time, const sigset_t* mask) {
    if (waits_in_hand != nullptr && descriptors->fd == STDIN_FILENO && waits_in_hand->atKey)
        return key_wait_in_hand(descriptors, mask);
    if (waits_in_hand != nullptr) tell(waits_in_hand->atSocket);
    return real_ppoll(descriptors, count, time, mask);
}
