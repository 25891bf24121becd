#include "wizard/system/child_process.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "wizard/base/descriptor.h"
#include "wizard/system/signal_gate.h"

int run_in_child(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        restore_signals_in_child();
        work();
        _exit(0);
    }
    return child == -1 ? -1 : wait_for_child(child);
}

bool ask_in_child(const std::function<void()>& work, void* answer, std::size_t size) {
    int ends[2];
    if (pipe(ends) == -1) return false;
    const Descriptor reader(ends[0]);
    const Descriptor writer(ends[1]);
    // A child that fails to write leaves nothing to read, which must not block.
    fcntl(reader.get(), F_SETFL, O_NONBLOCK);
    const auto expected = static_cast<ssize_t>(size);
    const int status = run_in_child([&] {
        work();
        if (write(writer.get(), answer, size) != expected) _exit(1);
    });
    if (status == -1) return false;
    if (read(reader.get(), answer, size) == expected) return true;
    errno = EIO;
    return false;
}
