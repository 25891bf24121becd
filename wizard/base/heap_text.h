#pragma once

#include <cstdlib>
#include <memory>

/// Frees what malloc gave.
struct FreeHeap {
    void operator()(void* memory) const { std::free(memory); }
};

/// A NUL-terminated text on the malloc heap, freed by its owner. Interfaces that hand out such a
/// text as `char*` say so; the receiver puts it into a HeapText at once.
using HeapText = std::unique_ptr<char, FreeHeap>;
