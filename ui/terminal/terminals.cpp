#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
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
    if (!is_in_front(keyboard)) return;
    tcflush(keyboard.descriptor, TCIFLUSH);
    // What is on its way from the keyboard arrives before poll(2) answers.
    pollfd input = {keyboard.descriptor, POLLIN, 0};
    poll(&input, 1, 0);
    tcflush(keyboard.descriptor, TCIFLUSH);
}
