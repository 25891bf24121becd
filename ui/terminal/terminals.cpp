#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <iterator>

#include "ui/terminal/terminal.h"
#include "ui/terminal/terminal_record.h"
#include "wizard/system/signal_gate.h"

namespace {

// One that does not control the wizard's session has no background, nor has one that is none.
bool is_in_front(const StandardTerminal& terminal) {
    const pid_t front = tcgetpgrp(terminal.descriptor);
    return front == -1 || front == getpgrp();
}

// In the background they may be those of a shell that has set none.
bool has_wizards_modes(const StandardTerminal& terminal) {
    termios now{};
    return wizard_terminal.keeps_modes && tcgetattr(terminal.descriptor, &now) == 0 &&
           now.c_lflag == terminal.kept.c_lflag && now.c_iflag == terminal.kept.c_iflag &&
           now.c_oflag == terminal.kept.c_oflag;
}

// What is on its way from the keyboard arrives before poll(2) answers.
void discard_input(int terminal) {
    pollfd input = {terminal, POLLIN, 0};
    tcflush(terminal, TCIFLUSH);
    poll(&input, 1, 0);
    tcflush(terminal, TCIFLUSH);
}

constexpr int most_cells = 4096;

// The lines or columns that the environment prescribes; 0 for none.
int prescribed(const char* variable) {
    const char* text = std::getenv(variable);
    char* end = nullptr;
    const long value = text != nullptr ? std::strtol(text, &end, 10) : 0;
    return value > 0 && value <= most_cells && *end == '\0' ? static_cast<int>(value) : 0;
}

// The same, or else what the terminal tells; 0 where nobody tells.
int size_of(const char* variable, int told) {
    const int wanted = prescribed(variable);
    return wanted != 0 || told > most_cells ? wanted : told;
}

winsize told_size() {
    winsize size{};
    ioctl(size_terminal(), TIOCGWINSZ, &size);
    return size;
}

// Whether a size that has been told would have curses take more, so that another stands in for it.
bool stand_in(const char* variable, int told, int present) {
    if (prescribed(variable) != 0) return false;
    unsetenv(variable);
    return told > most_cells && setenv(variable, std::to_string(present).c_str(), 1) == 0;
}

}  // namespace

void remember_terminals() {
    for (int standard = 0; standard <= STDERR_FILENO; ++standard) {
        if (isatty(standard) == 0) continue;
        StandardTerminal& terminal = wizard_terminal.standard[standard];
        // Changes nothing, but is for the foreground only.
        call_stoppable(SIGTTOU, [standard] { return tcflow(standard, TCOON); });
        terminal.copy = Descriptor(fcntl(standard, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
        terminal.descriptor = terminal.copy.isOpen() ? terminal.copy.get() : standard;
        tcgetattr(standard, &terminal.before);
    }
}

void keep_modes() {
    for (StandardTerminal& terminal : wizard_terminal.standard) {
        tcgetattr(terminal.descriptor, &terminal.kept);
        terminal.kept.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ECHONL);
        terminal.kept.c_lflag |= NOFLSH;
        terminal.kept.c_cc[VMIN] = 1;
        terminal.kept.c_cc[VTIME] = 0;
    }
    wizard_terminal.keeps_modes = true;
    retake_terminal();
}

bool retake_terminal() {
    bool all = true;
    for (const StandardTerminal& terminal : wizard_terminal.standard) {
        if (!wizard_terminal.keeps_modes || terminal.descriptor == no_descriptor) continue;
        const auto retake = [&] { return tcsetattr(terminal.descriptor, TCSANOW, &terminal.kept); };
        all = call_stoppable(SIGTTOU, retake) == 0 && all;
    }
    return all;
}

bool is_in_foreground() {
    return std::all_of(std::begin(wizard_terminal.standard), std::end(wizard_terminal.standard),
                       is_in_front);
}

void give_modes_back() {
    for (const StandardTerminal& terminal : wizard_terminal.standard) {
        if (is_in_front(terminal) || has_wizards_modes(terminal))
            tcsetattr(terminal.descriptor, TCSANOW, &terminal.before);
    }
    const StandardTerminal& keyboard = wizard_terminal.standard[STDIN_FILENO];
    if (is_in_front(keyboard)) discard_input(keyboard.descriptor);
}

int size_terminal() {
    for (const int standard : {STDOUT_FILENO, STDERR_FILENO, STDIN_FILENO}) {
        if (wizard_terminal.standard[standard].descriptor != no_descriptor)
            return wizard_terminal.standard[standard].descriptor;
    }
    return no_descriptor;
}

void take_size() {
    const winsize told = told_size();
    const int rows = size_of("LINES", told.ws_row);
    const int cols = size_of("COLUMNS", told.ws_col);
    if (is_term_resized(rows, cols)) resizeterm(rows, cols);
}

void with_sound_size(const std::function<void()>& ask) {
    const winsize told = told_size();
    const bool is_open = stdscr != nullptr;
    const bool rows = stand_in("LINES", told.ws_row, is_open ? getmaxy(stdscr) : 24);
    const bool cols = stand_in("COLUMNS", told.ws_col, is_open ? getmaxx(stdscr) : 80);
    ask();
    if (rows) unsetenv("LINES");
    if (cols) unsetenv("COLUMNS");
}
