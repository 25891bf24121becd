#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
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

constexpr int most_cells = 4096;

// The rows or columns that the environment prescribes; 0 for none.
int prescribed(const char* variable) {
    const char* text = std::getenv(variable);
    char* end = nullptr;
    const long value = text != nullptr ? std::strtol(text, &end, 10) : 0;
    return value > 0 && value <= most_cells && *end == '\0' ? static_cast<int>(value) : 0;
}

// Has it prescribe what the terminal tells or, in place of more than any has, what is now. False if
// it does so already, or nobody tells.
bool prescribe(const char* variable, int told, int present) {
    if (prescribed(variable) != 0) return false;
    unsetenv(variable);
    const int size = told > most_cells ? present : told;
    return size != 0 && setenv(variable, std::to_string(size).c_str(), 1) == 0;
}

}  // namespace

void remember_terminals() {
    for (int standard = 0; standard <= STDERR_FILENO; ++standard) {
        if (isatty(standard) == 0) continue;
        StandardTerminal& terminal = wizard_terminal.standard[standard];
        {
            // Changes nothing, but is for the foreground only.
            const MayStop here(SIGTTOU);
            tcflow(standard, TCOON);
        }
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
        const MayStop here(SIGTTOU);
        int result = 0;
        do {
            result = tcsetattr(terminal.descriptor, TCSANOW, &terminal.kept);
        } while (result == -1 && errno == EINTR);
        all = all && result == 0;
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
    if (!is_in_front(keyboard)) return;
    tcflush(keyboard.descriptor, TCIFLUSH);
    // What is on its way from the keyboard arrives before poll(2) answers.
    pollfd input = {keyboard.descriptor, POLLIN, 0};
    poll(&input, 1, 0);
    tcflush(keyboard.descriptor, TCIFLUSH);
}

int size_terminal() {
    for (const int standard : {STDOUT_FILENO, STDERR_FILENO, STDIN_FILENO}) {
        if (wizard_terminal.standard[standard].descriptor != no_descriptor)
            return wizard_terminal.standard[standard].descriptor;
    }
    return STDOUT_FILENO;
}

void with_sound_size(const std::function<void()>& ask) {
    winsize told{};
    ioctl(size_terminal(), TIOCGWINSZ, &told);
    const bool is_open = stdscr != nullptr;
    const bool rows = prescribe("LINES", told.ws_row, is_open ? getmaxy(stdscr) : 24);
    const bool cols = prescribe("COLUMNS", told.ws_col, is_open ? getmaxx(stdscr) : 80);
    const int lines = prescribed("LINES");
    // Before endwin(3X), which goes to the last line.
    if (wizard_terminal.stream != nullptr && is_term_resized(lines, prescribed("COLUMNS")))
        resizeterm(lines, prescribed("COLUMNS"));
    ask();
    if (rows) unsetenv("LINES");
    if (cols) unsetenv("COLUMNS");
}
