#include "tests/apply/failing_calloc.h"

#include <cstddef>

namespace {

bool fails = false;

}  // namespace

// The linker puts the second in the place of the first, which keeps another name (ld(1), --wrap).
extern "C" void* real_calloc(size_t count, size_t size) __asm__("__real_calloc");
extern "C" void* failing_calloc(size_t count, size_t size) __asm__("__wrap_calloc");

void* failing_calloc(size_t count, size_t size) {
    return fails ? nullptr : real_calloc(count, size);
}

FailingCalloc::FailingCalloc() {
    fails = true;
}

FailingCalloc::~FailingCalloc() {
    fails = false;
}
