#pragma once

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

/// Passwords in memory: what has held one is overwritten when it is done with, so that no later
/// look at the memory finds it. No compiler leaves that out, as it may a memset(3).

/// Overwrites `size` bytes with zeros.
inline void wipe(void* memory, std::size_t size) {
    std::fill_n(static_cast<volatile char*>(memory), size, '\0');
}

/// Overwrites a text, which is empty then.
template <std::size_t size>
void wipe(char (&text)[size]) {
    wipe(text, size);
}
inline void wipe(std::string& text) {
    wipe(text.data(), text.size());
    text.clear();
}

/// A password on the malloc heap, overwritten and freed by its owner.
struct WipeHeap {
    void operator()(char* text) const {
        wipe(text, std::strlen(text));
        std::free(text);
    }
};
using SecretText = std::unique_ptr<char, WipeHeap>;
