#pragma once

#include <dlfcn.h>

/// The function of libc, or of a sanitizer's before it, that would have been called under this name
/// without the preloaded library.
template <class Function>
Function* next_call(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}
