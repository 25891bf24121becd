#include "tests/support/waits.h"

#include <dlfcn.h>
#include <poll.h>
#include <sys/select.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <csignal>

namespace {

using Pselect = int(int, fd_set*, fd_set*, fd_set*, const timespec*, const sigset_t*);
using Ppoll = int(pollfd*, nfds_t, const timespec*, const sigset_t*);

Waits* waits_in_hand = nullptr;

Pselect& real_pselect() {
    static auto* const real = reinterpret_cast<Pselect*>(dlsym(RTLD_NEXT, "pselect"));
    return *real;
}

Ppoll& real_ppoll() {
    static auto* const real = reinterpret_cast<Ppoll*>(dlsym(RTLD_NEXT, "ppoll"));
    return *real;
}

int rounded_seconds(const timespec& time) {
    return static_cast<int>(
        std::lround(static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9));
}

timespec thousandth(const timespec& time) {
    return {0, (time.tv_sec * 1000000000L + time.tv_nsec) / 1000};
}

void tell(const std::function<void()>& listener) {
    if (listener)
        listener();
}

int sleep_in_hand(const timespec& time, const sigset_t* mask) {
    waits_in_hand->sleeps.push_back(rounded_seconds(time));
    tell(waits_in_hand->inSleep);
    const timespec shorter = thousandth(time);
    return real_pselect()(0, nullptr, nullptr, nullptr, &shorter, mask);
}

int key_wait_in_hand(pollfd* keyboard, const sigset_t* mask) {
    // What is called may put something else in its place.
    const std::function<void()> listener = waits_in_hand->atKey;
    listener();
    const timespec at_once = {};
    const int result = real_ppoll()(keyboard, 1, &at_once, mask);
    if (result != 0)
        return result;
    errno = EINTR;
    return -1;
}

}  // namespace

Waits::Waits() {
    waits_in_hand = this;
}

Waits::~Waits() {
    waits_in_hand = nullptr;
}

// In the place of the C library's.
extern "C" int pselect(int count, fd_set* readable, fd_set* writable, fd_set* exceptional,
                       const timespec* time, const sigset_t* mask) {
    if (waits_in_hand != nullptr && time != nullptr)
        return sleep_in_hand(*time, mask);
    return real_pselect()(count, readable, writable, exceptional, time, mask);
}

// Under a name of its own, since the C library's declaration says that ppoll() only writes into
// what it is given.
extern "C" int ppoll_in_hand(pollfd* descriptors, nfds_t count, const timespec* time,
                             const sigset_t* mask) __asm__("ppoll");

int ppoll_in_hand(pollfd* descriptors, nfds_t count, const timespec* time, const sigset_t* mask) {
    if (waits_in_hand != nullptr && descriptors->fd == STDIN_FILENO && waits_in_hand->atKey)
        return key_wait_in_hand(descriptors, mask);
    if (waits_in_hand != nullptr)
        tell(waits_in_hand->atSocket);
    return real_ppoll()(descriptors, count, time, mask);
}
