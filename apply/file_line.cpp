#include "apply/file_line.h"

#include "wizard/system/signal_gate.h"

bool read_file_line(std::FILE* file, FileLine& line) {
    FileLine next;
    let_signals_in();
    while (next.length < file_line_limit) {
        const int character = std::getc(file);
        if (character == EOF)
            break;
        next.text[next.length++] = static_cast<char>(character);
        if (character == '\n')
            break;
    }
    if (next.length == 0)
        return false;
    line = next;
    return true;
}

bool write_file_line(std::FILE* file, const FileLine& line) {
    return std::fwrite(line.text, 1, line.length, file) == line.length;
}
