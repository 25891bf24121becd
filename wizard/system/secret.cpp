#include "wizard/system/secret.h"

#include <cstdlib>
#include <cstring>

void wipe(void* memory, std::size_t size) {
    volatile char* bytes = static_cast<char*>(memory);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = '\0';
}

void wipe(std::string& text) {
    wipe(text.data(), text.size());
    text.clear();
}

void WipeHeap::operator()(char* text) const {
    wipe(text, std::strlen(text));
    std::free(text);
}
