// The calls of libc about files and processes, in a form that fails or kills on demand. The
// sanitizers, which have some of these calls for themselves, come by here too: they look for the
// next function of the same name.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tests/reliability/files/shim_orders.h"

namespace {

// What a call does to files.
constexpr bool none = false;
constexpr bool changes = true;

// The function of libc, or of a sanitizer's before it, that would have been called under this name
// without this library.
template <class Function>
Function* next_call(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

Course course_of(const char* call, const std::string& path, bool effect) {
    return is_watched(path) ? meet(call, path, effect) : Course::as_ever;
}

// Whether a call has to fail; then errno is set.
bool fails(const char* call, const std::string& path, bool effect) {
    return course_of(call, path, effect) == Course::fails;
}

bool fails(const char* call, int descriptor, bool effect) {
    return fails(call, name_of(descriptor), effect);
}

// The same for a call that is about no file that is watched.
bool process_call_fails(const char* call, const char* object = "") {
    return is_watched_process() && meet(call, object, none) == Course::fails;
}

bool effect_of_flags(int flags) { return (flags & (O_CREAT | O_TRUNC)) != 0; }

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

// A call that returns -1 where the orders say so, and else is made.
#define WATCHED(result, name, parameters, arguments, is_to_fail)                \
    extern "C" result name parameters {                                         \
        return is_to_fail ? -1 : next_call<result parameters>(#name) arguments; \
    }

WATCHED(int, rename, (const char* from, const char* to) noexcept, (from, to),
        fails("rename", from, changes))
WATCHED(int, symlink, (const char* target, const char* path) noexcept, (target, path),
        fails("symlink", path, changes))
WATCHED(int, unlink, (const char* path) noexcept, (path), fails("unlink", path, changes))
WATCHED(int, unlinkat, (int directory, const char* path, int flags) noexcept,
        (directory, path, flags), fails("unlinkat", path_in(directory, path), changes))
WATCHED(int, linkat,
        (int from_directory, const char* from, int directory, const char* path, int flags) noexcept,
        (from_directory, from, directory, path, flags),
        fails("linkat", path_in(directory, path), changes))
WATCHED(int, rmdir, (const char* path) noexcept, (path), fails("rmdir", path, changes))
WATCHED(int, chdir, (const char* path) noexcept, (path), fails("chdir", path, none))
WATCHED(ssize_t, readlink, (const char* path, char* target, size_t size) noexcept,
        (path, target, size), fails("readlink", path, none))
WATCHED(int, lstat64, (const char* path, struct stat64* facts) noexcept, (path, facts),
        fails("lstat", path, none))
// Of names in an open directory, which cp and rm don't ask about.
WATCHED(int, fstatat64, (int directory, const char* path, struct stat64* facts, int flags) noexcept,
        (directory, path, facts, flags),
        directory != AT_FDCWD && fails("lstat", path_in(directory, path), none))
WATCHED(ssize_t, read, (int descriptor, void* bytes, size_t count), (descriptor, bytes, count),
        fails("read", descriptor, none))
WATCHED(int, fsync, (int descriptor), (descriptor), fails("fsync", descriptor, changes))
WATCHED(int, fchown, (int descriptor, uid_t owner, gid_t group) noexcept,
        (descriptor, owner, group), fails("fchown", descriptor, changes))
WATCHED(int, fchmod, (int descriptor, mode_t mode) noexcept, (descriptor, mode),
        fails("fchmod", descriptor, changes))
WATCHED(ssize_t, copy_file_range,
        (int from, off64_t* from_offset, int to, off64_t* to_offset, size_t count, unsigned flags),
        (from, from_offset, to, to_offset, count, flags), fails("copy_file_range", to, changes))
// The directory that the wizard was started in is none of the files that are watched.
WATCHED(int, fchdir, (int descriptor) noexcept, (descriptor), process_call_fails("fchdir"))
WATCHED(pid_t, fork, () noexcept, (), process_call_fails("fork"))
WATCHED(int, pipe, (int* ends) noexcept, (ends), process_call_fails("pipe"))

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return fails("open", path, effect_of_flags(flags))
               ? -1
               : next_call<decltype(::open)>("open")(path, flags, mode);
}

int openat(int directory, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return fails("openat", path_in(directory, path), effect_of_flags(flags))
               ? -1
               : next_call<decltype(::openat)>("openat")(directory, path, flags, mode);
}

// The names that these have for programs whose sizes of files have 64 bits on every system.
int open64(const char* path, int flags, ...) __attribute__((alias("open")));
int openat64(int directory, const char* path, int flags, ...) __attribute__((alias("openat")));

std::FILE* fdopen(int descriptor, const char* mode) noexcept {
    if (fails("fdopen", descriptor, none)) return nullptr;
    if (*mode == 'r' && fails("read", descriptor, none))
        spoil(descriptor, "/", O_RDONLY | O_DIRECTORY);
    return next_call<decltype(::fdopen)>("fdopen")(descriptor, mode);
}

int fclose(std::FILE* file) {
    const std::string name = name_of(fileno(file));
    const bool writes = is_watched(name) && (fcntl(fileno(file), F_GETFL) & O_ACCMODE) == O_WRONLY;
    if (writes && fails("write", name, changes)) spoil(fileno(file), "/dev/full", O_WRONLY);
    const bool close_fails = fails("close", name, none);
    const int failure = errno;
    const int closed = next_call<decltype(::fclose)>("fclose")(file);
    if (close_fails) errno = failure;
    return close_fails ? EOF : closed;
}

int close(int descriptor) {
    const bool close_fails = fails("close", descriptor, none);
    const int failure = errno;
    const int closed = next_call<decltype(::close)>("close")(descriptor);
    if (close_fails) errno = failure;
    return close_fails ? -1 : closed;
}

ssize_t write(int descriptor, const void* bytes, size_t count) {
    const Course course = course_of("write", name_of(descriptor), changes);
    if (course == Course::fails) return -1;
    const bool half_way = course == Course::half_way;
    const ssize_t written =
        next_call<decltype(::write)>("write")(descriptor, bytes, half_way ? count / 2 : count);
    if (half_way) die();
    return written;
}

char* mkdtemp(char* path) {
    if (fails("mkdtemp", path, changes)) return nullptr;
    char* made = next_call<decltype(::mkdtemp)>("mkdtemp")(path);
    if (made != nullptr && is_watched(made))
        meet("has made", std::string("the directory ") + made, none);
    return made;
}

int execl(const char* path, const char* argument, ...) noexcept {
    std::vector<char*> arguments{const_cast<char*>(argument)};
    va_list rest;
    va_start(rest, argument);
    while (arguments.back() != nullptr) arguments.push_back(va_arg(rest, char*));
    va_end(rest);
    if (process_call_fails("execl", arguments[arguments.size() - 2])) return -1;
    return execv(path, arguments.data());
}

// A command that can write to one file alone could not tell of its calls.
int prctl(int option, ...) noexcept {
    if (option == PR_SET_NO_NEW_PRIVS && is_watched_process()) return -1;
    va_list arguments;
    va_start(arguments, option);
    unsigned long rest[4];
    for (unsigned long& argument : rest) argument = va_arg(arguments, unsigned long);
    va_end(arguments);
    return static_cast<int>(syscall(SYS_prctl, option, rest[0], rest[1], rest[2], rest[3]));
}

}  // extern "C"
