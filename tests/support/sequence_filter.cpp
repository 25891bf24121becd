#include "tests/support/sequence_filter.h"

#include <utility>

SequenceFilter::SequenceFilter(std::string unwanted_sequence)
    : unwanted(std::move(unwanted_sequence)) {}

std::string SequenceFilter::filter(const std::string& piece) {
    std::string output;
    for (const char byte : piece) {
        held_back += byte;
        while (unwanted.compare(0, held_back.size(), held_back) != 0) {
            output += held_back.front();
            held_back.erase(0, 1);
        }
        if (held_back == unwanted)
            held_back.clear();
    }
    return output;
}
