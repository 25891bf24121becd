#include "tests/support/plain_text.h"

#include <cctype>

namespace {

/// The index behind the operating system command whose text starts at `start`. The Linux console's
/// "reset the palette" is a single letter; the others go on to BEL or to the string terminator.
size_t end_of_system_command(const std::string& text, size_t start) {
    if (text.compare(start, 1, "R") == 0)
        return start + 1;
    const size_t end = text.find_first_of("\x07\x1b", start);
    if (end == std::string::npos)
        return text.size();
    return text[end] == '\x07' ? end + 1 : end + 2;
}

/// The index behind the escape sequence that starts at `start`.
size_t end_of_sequence(const std::string& text, size_t start) {
    const size_t kind = start + 1;
    if (text.compare(kind, 1, "]") == 0)
        return end_of_system_command(text, kind + 1);
    // "[", parameters and a final character from "@" on, or some of " " to "/" and one from "0" on
    const bool control_sequence = text.compare(kind, 1, "[") == 0;
    const char first_final = control_sequence ? '@' : '0';
    size_t at = control_sequence ? kind + 1 : kind;
    while (at < text.size() && text[at] < first_final)
        ++at;
    return at + 1;
}

}  // namespace

std::string after_alternate_screen(const std::string& output) {
    const std::string leave = "\x1b[?1049l";
    const size_t at = output.rfind(leave);
    return at == std::string::npos ? output : output.substr(at + leave.size());
}

std::string plain_text(const std::string& output) {
    std::string text;
    for (size_t at = 0; at < output.size();) {
        if (output[at] == '\x1b') {
            at = end_of_sequence(output, at);
            continue;
        }
        const char byte = output[at++];
        if (byte == '\n' || byte == '\t' || std::iscntrl(static_cast<unsigned char>(byte)) == 0)
            text += byte;
    }
    return text;
}
