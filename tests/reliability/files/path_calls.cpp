// The calls of libc that name a file, and those that make processes, in a form that fails or kills
// on demand. The sanitizers, which have some of these calls for themselves, come by here too: they
// look for the next function of the same name.

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/select.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tests/reliability/files/next_call.h"
#include "tests/reliability/files/shim_orders.h"

namespace {

// Whether a call about `path` has to fail; then errno is set.
bool fails(const char* call, const char* path, Effect effect) {
    return is_watched(path) && set_failure(meet(call, path, effect));
}

// The same for a call that is about no file.
bool process_call_fails(const char* call, const char* object) {
    return is_watched_process() && set_failure(meet(call, object, Effect::none));
}

Effect effect_of_flags(int flags) {
    return (flags & (O_CREAT | O_TRUNC)) != 0 ? Effect::changes : Effect::none;
}

// The path of a name in an open directory.
std::string path_in(int directory, const char* name) {
    return directory == AT_FDCWD || *name == '/' ? name : name_of(directory) + "/" + name;
}

// From now on every read or write of the stream's descriptor fails by itself, the write with a full
// disk.
void spoil(int descriptor, const char* by, int flags) {
    const int spoiled = next_call<decltype(::open)>("open")(by, flags | O_CLOEXEC);
    dup3(spoiled, descriptor, O_CLOEXEC);
    next_call<decltype(::close)>("close")(spoiled);
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (fails("open", path, effect_of_flags(flags)))
        return -1;
    return next_call<decltype(::open)>("open")(path, flags, mode);
}

int openat(int directory, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (fails("openat", path_in(directory, path).c_str(), effect_of_flags(flags)))
        return -1;
    return next_call<decltype(::openat)>("openat")(directory, path, flags, mode);
}

// The names that these have for programs whose sizes of files have 64 bits on every system.
int open64(const char* path, int flags, ...) __attribute__((alias("open")));
int openat64(int directory, const char* path, int flags, ...) __attribute__((alias("openat")));

std::FILE* fdopen(int descriptor, const char* mode) noexcept {
    const std::string name = name_of(descriptor);
    if (fails("fdopen", name.c_str(), Effect::none))
        return nullptr;
    if (*mode == 'r' && fails("read", name.c_str(), Effect::none))
        spoil(descriptor, "/", O_RDONLY | O_DIRECTORY);
    return next_call<decltype(::fdopen)>("fdopen")(descriptor, mode);
}

int fclose(std::FILE* file) {
    const std::string name = name_of(fileno(file));
    const bool writes = is_watched(name) && (fcntl(fileno(file), F_GETFL) & O_ACCMODE) == O_WRONLY;
    if (writes && fails("write", name.c_str(), Effect::changes))
        spoil(fileno(file), "/dev/full", O_WRONLY);
    const bool close_fails = fails("close", name.c_str(), Effect::none);
    const int failure = errno;
    const int closed = next_call<decltype(::fclose)>("fclose")(file);
    if (close_fails)
        errno = failure;
    return close_fails ? EOF : closed;
}

int rename(const char* from, const char* to) noexcept {
    return fails("rename", from, Effect::changes)
               ? -1
               : next_call<decltype(::rename)>("rename")(from, to);
}

int symlink(const char* target, const char* path) noexcept {
    return fails("symlink", path, Effect::changes)
               ? -1
               : next_call<decltype(::symlink)>("symlink")(target, path);
}

int unlink(const char* path) noexcept {
    return fails("unlink", path, Effect::changes) ? -1
                                                  : next_call<decltype(::unlink)>("unlink")(path);
}

int unlinkat(int directory, const char* path, int flags) noexcept {
    return fails("unlinkat", path_in(directory, path).c_str(), Effect::changes)
               ? -1
               : next_call<decltype(::unlinkat)>("unlinkat")(directory, path, flags);
}

int linkat(int from_directory, const char* from, int directory, const char* path,
           int flags) noexcept {
    return fails("linkat", path_in(directory, path).c_str(), Effect::changes)
               ? -1
               : next_call<decltype(::linkat)>("linkat")(from_directory, from, directory, path,
                                                         flags);
}

ssize_t readlink(const char* path, char* target, size_t size) noexcept {
    return fails("readlink", path, Effect::none)
               ? -1
               : next_call<decltype(::readlink)>("readlink")(path, target, size);
}

int lstat64(const char* path, struct stat64* facts) noexcept {
    return fails("lstat", path, Effect::none)
               ? -1
               : next_call<int(const char*, struct stat64*)>("lstat64")(path, facts);
}

// Of names in an open directory, which cp and rm don't ask about.
int fstatat64(int directory, const char* path, struct stat64* facts, int flags) noexcept {
    return directory != AT_FDCWD && fails("lstat", path_in(directory, path).c_str(), Effect::none)
               ? -1
               : next_call<int(int, const char*, struct stat64*, int)>("fstatat64")(directory, path,
                                                                                    facts, flags);
}

char* mkdtemp(char* path) {
    if (fails("mkdtemp", path, Effect::changes))
        return nullptr;
    char* made = next_call<decltype(::mkdtemp)>("mkdtemp")(path);
    if (made != nullptr && is_watched(made))
        meet("has made", std::string("the directory ") + made, Effect::none);
    return made;
}

int chdir(const char* path) noexcept {
    return fails("chdir", path, Effect::none) ? -1 : next_call<decltype(::chdir)>("chdir")(path);
}

int rmdir(const char* path) noexcept {
    return fails("rmdir", path, Effect::changes) ? -1 : next_call<decltype(::rmdir)>("rmdir")(path);
}

pid_t fork() noexcept {
    return process_call_fails("fork", "") ? -1 : next_call<decltype(::fork)>("fork")();
}

int pipe(int* ends) noexcept {
    return process_call_fails("pipe", "") ? -1 : next_call<decltype(::pipe)>("pipe")(ends);
}

int execl(const char* path, const char* argument, ...) noexcept {
    std::vector<char*> arguments{const_cast<char*>(argument)};
    va_list rest;
    va_start(rest, argument);
    while (arguments.back() != nullptr)
        arguments.push_back(va_arg(rest, char*));
    va_end(rest);
    if (process_call_fails("execl", arguments[arguments.size() - 2]))
        return -1;
    return execv(path, arguments.data());
}

// A command that can write to one file alone could not tell of its calls.
int prctl(int option, ...) noexcept {
    if (option == PR_SET_NO_NEW_PRIVS && is_watched_process())
        return -1;
    va_list arguments;
    va_start(arguments, option);
    unsigned long rest[4];
    for (unsigned long& argument : rest)
        argument = va_arg(arguments, unsigned long);
    va_end(arguments);
    return static_cast<int>(syscall(SYS_prctl, option, rest[0], rest[1], rest[2], rest[3]));
}

// The wizard's sleeps, which are this call without a descriptor, take five milliseconds.
int pselect(int count, fd_set* readable, fd_set* writable, fd_set* exceptional,
            const timespec* timeout, const sigset_t* mask) {
    const timespec moment{0, 5000000};
    const bool is_sleep = count == 0 && is_watched_process();
    return next_call<decltype(::pselect)>("pselect")(count, readable, writable, exceptional,
                                                     is_sleep ? &moment : timeout, mask);
}

}  // extern "C"
