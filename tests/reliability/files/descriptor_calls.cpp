// The calls of libc about an open file, in a form that fails or kills on demand; see
// path_calls.cpp.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "tests/reliability/files/next_call.h"
#include "tests/reliability/files/shim_orders.h"

namespace {

// The orders for a call about an open file; errno is set where it is to fail.
Orders orders_for(const char* call, int descriptor, Effect effect) {
    const std::string name = name_of(descriptor);
    if (!is_watched(name))
        return {};
    const Orders orders = meet(call, name, effect);
    set_failure(orders);
    return orders;
}

// Makes a call that takes arguments behind the descriptor, or has it fail.
template <class Function, class... Arguments>
int change(const char* call, int descriptor, Arguments... arguments) {
    if (orders_for(call, descriptor, Effect::changes).failure != 0)
        return -1;
    return next_call<Function>(call)(descriptor, arguments...);
}

}  // namespace

extern "C" {

ssize_t read(int descriptor, void* bytes, size_t count) {
    if (orders_for("read", descriptor, Effect::none).failure != 0)
        return -1;
    return next_call<decltype(::read)>("read")(descriptor, bytes, count);
}

ssize_t write(int descriptor, const void* bytes, size_t count) {
    const Orders orders = orders_for("write", descriptor, Effect::writes);
    if (orders.failure != 0)
        return -1;
    auto* const real_write = next_call<decltype(::write)>("write");
    if (orders.half_way) {
        real_write(descriptor, bytes, count / 2);
        die();
    }
    return real_write(descriptor, bytes, count);
}

ssize_t copy_file_range(int from, off64_t* from_offset, int to, off64_t* to_offset, size_t count,
                        unsigned flags) {
    const Orders orders = orders_for("copy_file_range", to, Effect::writes);
    if (orders.failure != 0)
        return -1;
    auto* const copy = next_call<decltype(::copy_file_range)>("copy_file_range");
    if (orders.half_way) {
        struct stat facts {};
        fstat(from, &facts);
        copy(from, from_offset, to, to_offset, static_cast<size_t>(facts.st_size) / 2, flags);
        die();
    }
    return copy(from, from_offset, to, to_offset, count, flags);
}

int close(int descriptor) {
    const int failure = orders_for("close", descriptor, Effect::none).failure;
    const int closed = next_call<decltype(::close)>("close")(descriptor);
    if (failure != 0)
        errno = failure;
    return failure != 0 ? -1 : closed;
}

int fsync(int descriptor) {
    return change<decltype(::fsync)>("fsync", descriptor);
}

int ftruncate(int descriptor, off_t length) noexcept {
    return change<decltype(::ftruncate)>("ftruncate", descriptor, length);
}

int fchown(int descriptor, uid_t owner, gid_t group) noexcept {
    return change<decltype(::fchown)>("fchown", descriptor, owner, group);
}

int fchmod(int descriptor, mode_t mode) noexcept {
    return change<decltype(::fchmod)>("fchmod", descriptor, mode);
}

int fchdir(int descriptor) noexcept {
    // The directory that the wizard was started in is none of the files that are watched.
    if (is_watched_process() && set_failure(meet("fchdir", "", Effect::none)))
        return -1;
    return next_call<decltype(::fchdir)>("fchdir")(descriptor);
}

}  // extern "C"
