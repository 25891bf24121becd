#include "tests/apply/relay_calls.h"

namespace {

std::vector<int>& calls() {
    static std::vector<int> counts;
    return counts;
}

}  // namespace

// The linker puts the second in the place of the first, which keeps another name (ld(1), --wrap).
int real_write_filter(const int* indices, int count) __asm__("__real__Z18relay_write_filterPKii");
int noted_write_filter(const int* indices, int count) __asm__("__wrap__Z18relay_write_filterPKii");

int noted_write_filter(const int* indices, int count) {
    calls().push_back(count);
    return real_write_filter(indices, count);
}

const std::vector<int>& relay_write_filter_calls() {
    return calls();
}
