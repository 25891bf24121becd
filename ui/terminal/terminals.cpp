#include "ui/terminal/terminals.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <initializer_list>

#include "wizard/system/signal_gate.h"

namespace {

constexpr int no_terminal = -1;

struct Terminal {
    int descriptor = no_terminal;
    termios before{};  // the wizard came
    termios kept{};    // while the wizard is there
};

// By their standard descriptors.
Terminal terminals[STDERR_FILENO + 1];
bool are_kept = false;

// One that does not control the wizard's session has no background.
bool is_in_front(int terminal) {
    const pid_t front = tcgetpgrp(terminal);
    return front == -1 || front == getpgrp();
}

// In the background they may be those of a shell that has set none.
bool has_wizards_modes(const Terminal& terminal) {
    termios now{};
    return are_kept && tcgetattr(terminal.descriptor, &now) == 0 &&
           now.c_lflag == terminal.kept.c_lflag && now.c_iflag == terminal.kept.c_iflag &&
           now.c_oflag == terminal.kept.c_oflag;
}

void give_back(const Terminal& terminal) {
    if (terminal.descriptor == no_terminal)
        return;
    if (is_in_front(terminal.descriptor) || has_wizards_modes(terminal))
        tcsetattr(terminal.descriptor, TCSANOW, &terminal.before);
}

// What is on its way from the keyboard arrives before poll(2) answers.
void discard_input(int terminal) {
    pollfd input = {terminal, POLLIN, 0};
    tcflush(terminal, TCIFLUSH);
    poll(&input, 1, 0);
    tcflush(terminal, TCIFLUSH);
}

}  // namespace

void remember_terminals() {
    for (int standard = 0; standard <= STDERR_FILENO; ++standard) {
        if (isatty(standard) == 0)
            continue;
        {
            // Changes nothing, but is for the foreground only.
            const MayStop here(SIGTTOU);
            tcflow(standard, TCOON);
        }
        const int copy = fcntl(standard, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        terminals[standard].descriptor = copy != -1 ? copy : standard;
        tcgetattr(standard, &terminals[standard].before);
    }
}

void keep_terminals() {
    for (Terminal& terminal : terminals) {
        if (terminal.descriptor == no_terminal)
            continue;
        tcgetattr(terminal.descriptor, &terminal.kept);
        terminal.kept.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ECHONL);
        terminal.kept.c_lflag |= NOFLSH;
        terminal.kept.c_cc[VMIN] = 1;
        terminal.kept.c_cc[VTIME] = 0;
    }
    are_kept = true;
    retake_terminals();
}

bool retake_terminals() {
    bool all = true;
    for (const Terminal& terminal : terminals) {
        if (!are_kept || terminal.descriptor == no_terminal)
            continue;
        const MayStop here(SIGTTOU);
        int result = 0;
        do {
            result = tcsetattr(terminal.descriptor, TCSANOW, &terminal.kept);
        } while (result == -1 && errno == EINTR);
        all = all && result == 0;
    }
    return all;
}

bool are_terminals_in_front() {
    for (const Terminal& terminal : terminals) {
        if (terminal.descriptor != no_terminal && !is_in_front(terminal.descriptor))
            return false;
    }
    return true;
}

void give_terminals_back() {
    for (const Terminal& terminal : terminals)
        give_back(terminal);
    const int keyboard = terminals[STDIN_FILENO].descriptor;
    if (keyboard != no_terminal && is_in_front(keyboard))
        discard_input(keyboard);
}

int screen_terminal() {
    for (const int standard : {STDOUT_FILENO, STDERR_FILENO, STDIN_FILENO}) {
        if (terminals[standard].descriptor != no_terminal)
            return terminals[standard].descriptor;
    }
    return no_terminal;
}
