#pragma once

#include <cstddef>
#include <functional>

/// What may block for as long as it likes in a library, as a look-up by a server that is down, no
/// handler that ends the program may interrupt: a child process, which may be left behind, does it.

/// Has a child process, with the signals as the wizard was started with them, do `work`, and waits
/// for its end, letting signals in. Returns its wait status (waitpid(2)), 0 when `work` has
/// returned, or -1, with errno set, when no process can be had.
int run_in_child(const std::function<void()>& work);

/// The same for work that leaves `size` bytes, at most PIPE_BUF, without a pointer in them at
/// `answer`, which are then there in this process too. Returns false, with errno set and `answer`
/// as it was, when no process or pipe can be had or the child has not come to its end.
bool ask_in_child(const std::function<void()>& work, void* answer, std::size_t size);
