#include "tests/support/open_descriptors.h"

#include <filesystem>

long open_descriptors() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    constexpr long that_of_the_listing = 1;
    return std::distance(begin(descriptors), end(descriptors)) - that_of_the_listing;
}
