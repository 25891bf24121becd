#include "tests/screens/waits.h"

#include <dlfcn.h>
#include <sys/select.h>
#include <unistd.h>

#include <utility>

namespace {

std::function<void()> key_hook;
std::function<void()> sleep_hook;

}  // namespace

void when_waiting_for_key(std::function<void()> hook) {
    key_hook = std::move(hook);
}

void when_sleeping(std::function<void()> hook) {
    sleep_hook = std::move(hook);
}

int pselect(int count, fd_set* readable, fd_set* writable, fd_set* exceptional,
            const timespec* timeout, const sigset_t* mask) {
    if (readable != nullptr && FD_ISSET(STDIN_FILENO, readable) && key_hook) {
        key_hook();
        return 1;
    }
    if (count == 0 && sleep_hook)
        sleep_hook();
    static const auto system_pselect =
        reinterpret_cast<decltype(&pselect)>(dlsym(RTLD_NEXT, "pselect"));
    return system_pselect(count, readable, writable, exceptional, timeout, mask);
}
