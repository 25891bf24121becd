#include "tests/support/terminal_modes.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <ostream>
#include <system_error>

TerminalModes read_terminal_modes(int descriptor) {
    TerminalModes modes{};
    if (tcgetattr(descriptor, &modes.settings) != 0)
        throw std::system_error(errno, std::generic_category(), "tcgetattr");
    return modes;
}

bool operator==(const TerminalModes& left, const TerminalModes& right) {
    const termios& a = left.settings;
    const termios& b = right.settings;
    return a.c_iflag == b.c_iflag && a.c_oflag == b.c_oflag && a.c_cflag == b.c_cflag &&
           a.c_lflag == b.c_lflag && std::equal(std::begin(a.c_cc), std::end(a.c_cc), b.c_cc);
}

bool operator!=(const TerminalModes& left, const TerminalModes& right) {
    return !(left == right);
}

std::ostream& operator<<(std::ostream& out, const TerminalModes& modes) {
    const termios& settings = modes.settings;
    const auto flag = [&out](bool set, const char* name) { out << (set ? " " : " -") << name; };
    out << std::oct << "input " << settings.c_iflag << ", output " << settings.c_oflag
        << ", control " << settings.c_cflag << ", local " << settings.c_lflag << std::dec << ":";
    flag(modes.echo(), "echo");
    flag(modes.canonical(), "icanon");
    flag((settings.c_lflag & ISIG) != 0, "isig");
    flag((settings.c_iflag & ICRNL) != 0, "icrnl");
    flag((settings.c_oflag & OPOST) != 0, "opost");
    flag((settings.c_oflag & ONLCR) != 0, "onlcr");
    return out;
}
