#include "tests/support/repeat_expander.h"

#include <algorithm>

namespace {

constexpr char escape = '\x1b';

/// How often the sequence wants the character repeated, 0 if it is another command. Bounded, as no
/// screen is that large.
size_t repetitions(const std::string& sequence) {
    if (sequence.compare(0, 2, "\x1b[") != 0 || sequence.back() != 'b')
        return 0;
    const std::string number = sequence.substr(2, sequence.size() - 3);
    size_t count = 0;
    for (const char digit : number) {
        if (digit < '0' || digit > '9')
            return 0;
        count = std::min<size_t>(count * 10 + static_cast<size_t>(digit - '0'), 10000);
    }
    return std::max<size_t>(count, 1);
}

/// Whether a byte is the last one of the sequence that it follows.
bool ends(const std::string& sequence, char byte) {
    if (sequence.size() == 1)
        return byte != '[' && byte >= '0';
    return byte >= (sequence[1] == '[' ? '@' : '0');
}

}  // namespace

std::string RepeatExpander::expand(const std::string& piece) {
    std::string output;
    for (const char byte : piece) {
        if (sequence.empty())
            takePlainByte(byte, output);
        else
            takeSequenceByte(byte, output);
    }
    return output;
}

void RepeatExpander::takePlainByte(char byte, std::string& output) {
    if (byte == escape) {
        sequence = byte;
        return;
    }
    output += byte;
    if (static_cast<unsigned char>(byte) < ' ')
        last.clear();
    else if ((byte & '\xc0') == '\x80')
        last += byte;
    else
        last = byte;
}

void RepeatExpander::takeSequenceByte(char byte, std::string& output) {
    if (byte < ' ') {
        output += sequence;
        sequence.clear();
        takePlainByte(byte, output);
        return;
    }
    const bool complete = ends(sequence, byte);
    sequence += byte;
    if (complete)
        endSequence(output);
}

void RepeatExpander::endSequence(std::string& output) {
    const size_t count = last.empty() ? 0 : repetitions(sequence);
    for (size_t i = 0; i < count; ++i)
        output += last;
    if (count == 0)
        output += sequence;
    sequence.clear();
}
