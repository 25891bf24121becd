#include "tests/support/descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

Pipe make_pipe() {
    int ends[2];
    checked(pipe2(ends, O_CLOEXEC), "pipe2");
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

int checked(int result, const char* call) {
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), call);
    return result;
}
