#pragma once

#include "wizard/base/descriptor.h"

/// The two ends of a pipe, both close-on-exec.
struct Pipe {
    Descriptor read_end;
    Descriptor write_end;
};

/// Throws std::system_error.
Pipe make_pipe();

/// Passes on what a system call has returned, or throws std::system_error with errno and `call` if
/// that is negative.
int checked(int result, const char* call);

/// How many descriptors this process has open.
long open_descriptors();
