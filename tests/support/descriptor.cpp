#include "tests/support/descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

Pipe make_pipe() {
    int ends[2];
    checked(pipe2(ends, O_CLOEXEC), "pipe2");
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

int checked(int result, const char* call) {
    if (result < 0) throw std::system_error(errno, std::generic_category(), call);
    return result;
}

long open_descriptors() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    constexpr long that_of_the_listing = 1;
    return std::distance(begin(descriptors), end(descriptors)) - that_of_the_listing;
}
