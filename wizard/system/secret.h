#pragma once

#include <cstddef>
#include <memory>
#include <string>

/// Passwords in memory: what has held one is overwritten when it is done with, so that no later
/// look at the memory finds it. No compiler leaves that out, as it may a memset(3).

/// Overwrites `size` bytes with zeros.
void wipe(void* memory, std::size_t size);

/// Overwrites a text, which is empty then.
template <std::size_t size>
void wipe(char (&text)[size]) {
    wipe(text, size);
}
void wipe(std::string& text);

/// Overwrites and frees a NUL-terminated text that malloc gave.
struct WipeHeap {
    void operator()(char* text) const;
};

/// A password on the malloc heap, overwritten and freed by its owner.
using SecretText = std::unique_ptr<char, WipeHeap>;
