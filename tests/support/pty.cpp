#include "tests/support/pty.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <iterator>
#include <ostream>
#include <system_error>

bool operator==(const TerminalModes& left, const TerminalModes& right) {
    const termios& a = left.settings;
    const termios& b = right.settings;
    return a.c_iflag == b.c_iflag && a.c_oflag == b.c_oflag && a.c_cflag == b.c_cflag &&
           a.c_lflag == b.c_lflag && std::equal(std::begin(a.c_cc), std::end(a.c_cc), b.c_cc);
}

bool operator!=(const TerminalModes& left, const TerminalModes& right) { return !(left == right); }

std::ostream& operator<<(std::ostream& out, const TerminalModes& modes) {
    const termios& settings = modes.settings;
    out << std::oct << "input " << settings.c_iflag << ", output " << settings.c_oflag
        << ", control " << settings.c_cflag << ", local " << settings.c_lflag << std::dec << ":";
    return out << (modes.echo() ? " echo" : " -echo")
               << (modes.canonical() ? " icanon" : " -icanon");
}

Pty::Pty(int rows, int cols)
    : screenSide(
          checked(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK), "posix_openpt")) {
    checked(grantpt(screenSide.get()), "grantpt");
    checked(unlockpt(screenSide.get()), "unlockpt");
    char name[64];
    checked(-ptsname_r(screenSide.get(), name, sizeof name), "ptsname_r");
    programSideName = name;
    programSide = openProgramSide();
    resize(rows, cols);
}

Descriptor Pty::openProgramSide() const {
    return Descriptor(
        checked(open(programSideName.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC), "open a terminal"));
}

std::string Pty::read() {
    std::string output;
    char piece[4096];
    ssize_t length;
    while ((length = ::read(screenSide.get(), piece, sizeof piece)) > 0)
        output.append(piece, static_cast<size_t>(length));
    return output;
}

size_t Pty::write(const std::string& bytes) {
    const ssize_t written = ::write(screenSide.get(), bytes.data(), bytes.size());
    if (written >= 0) return static_cast<size_t>(written);
    if (errno == EAGAIN || errno == EINTR) return 0;
    throw std::system_error(errno, std::generic_category(), "write to a terminal");
}

void Pty::fill() const {
    const Descriptor filler = openProgramSide();
    checked(fcntl(filler.get(), F_SETFL, O_WRONLY | O_NONBLOCK), "fcntl");
    const std::string plenty(4096, 'x');
    pollfd output{filler.get(), POLLOUT, 0};
    pollfd on_its_way{screenSide.get(), POLLIN, 0};
    do {
        while (::write(filler.get(), plenty.data(), plenty.size()) > 0) continue;
        poll(&on_its_way, 1, 0);
    } while (poll(&output, 1, 0) == 1);
}

bool Pty::hasUnreadInput() const {
    pollfd input{programSide.get(), POLLIN, 0};
    return poll(&input, 1, 0) == 1;
}

void Pty::resize(int rows, int cols) {
    winsize size{};
    size.ws_row = static_cast<unsigned short>(rows);
    size.ws_col = static_cast<unsigned short>(cols);
    checked(ioctl(screenSide.get(), TIOCSWINSZ, &size), "TIOCSWINSZ");
}

int Pty::foregroundGroup() const {
    return std::max(0, checked(tcgetpgrp(screenSide.get()), "tcgetpgrp"));
}

TerminalModes Pty::modes() const {
    TerminalModes modes{};
    checked(tcgetattr(screenSide.get(), &modes.settings), "tcgetattr");
    return modes;
}

void Pty::hangUp() { screenSide.close(); }
