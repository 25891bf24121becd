// A library to be preloaded into the wizard: each of its sleeps, a pselect(2) without descriptors,
// takes TELUMA_SLEEP_MS milliseconds where that is set; one of no time stays so. What the wizard
// starts finds no length in its environment.

#include <dlfcn.h>
#include <sys/select.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

long sleep_ms = -1;

__attribute__((constructor)) void read_length() {
    // The wizard may be started by another program, which hands the variables on to it.
    if (std::strcmp(program_invocation_short_name, "teluma-wizard") != 0) return;
    if (const char* length = std::getenv("TELUMA_SLEEP_MS")) sleep_ms = std::atol(length);
    unsetenv("TELUMA_SLEEP_MS");
}

bool is_sleep(int count, const timespec* time) {
    return count == 0 && time != nullptr && (time->tv_sec != 0 || time->tv_nsec != 0);
}

}  // namespace

extern "C" int pselect(int count, fd_set* readable, fd_set* writable, fd_set* exceptional,
                       const timespec* time, const sigset_t* mask) {
    auto* const next = reinterpret_cast<decltype(&::pselect)>(dlsym(RTLD_NEXT, "pselect"));
    const timespec length{sleep_ms / 1000, sleep_ms % 1000 * 1000000};
    const bool is_changed = sleep_ms >= 0 && is_sleep(count, time);
    return next(count, readable, writable, exceptional, is_changed ? &length : time, mask);
}
