#include "wizard/start_up.h"

#include <curses.h>
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

#include "ui/main_window.h"
#include "ui/message_dialogs.h"
#include "ui/terminal/terminal.h"
#include "ui/window.h"
#include "wizard/base/descriptor.h"
#include "wizard/base/tel_help.h"
#include "wizard/ending.h"
#include "wizard/system/resource_limits.h"
#include "wizard/system/signal_gate.h"
#include "wizard/terminal_session.h"

void fill_standard_descriptors() {
    for (int standard = 0; standard <= STDERR_FILENO; ++standard) {
        // Which takes the lowest number that is free.
        if (fcntl(standard, F_GETFD) == -1) open("/dev/null", O_RDWR);
    }
}

void hold_signals() {
    hold_signal(SIGWINCH, on_resize);
    for (const int signal_number : {SIGINT, SIGTERM, SIGHUP})
        hold_signal(signal_number, abort_wizard);
    // Ignored, it was started by somebody who could not make it go on.
    if (!is_ignored(SIGTSTP)) hold_signal(SIGTSTP, suspend_wizard);
    hold_signal(SIGCONT, continue_wizard);
    // A write fails instead, and with it the step.
    for (const int signal_number : {SIGPIPE, SIGXFSZ}) ignore_signal(signal_number);
}

void prepare_process() {
    // Ignored, it would keep children from being waited for, and a shell from its commands' ends.
    signal(SIGCHLD, SIG_DFL);
    keep_open_files_from_children();
    // The connection to a port that is taken is never closed, however often the port is tried.
    change_limit(RLIMIT_NOFILE, RLIM_INFINITY);
    // It would hold the passwords.
    change_limit(RLIMIT_CORE, 0);
    forbid_core_dumps();
}

bool start_curses() {
    if (open_terminal()) return true;
    // In curses' own words, as the library may well be there.
    const char* type = std::getenv("TERM");
    std::fprintf(stderr, "Error opening terminal: %s.\nTry TERM=xterm-256color.\n",
                 type != nullptr ? type : "unknown");
    std::printf("You must install ncurses library\n");
    return false;
}

void make_main_window() {
    define_colours();
    draw_background();
    main_window = new Window(stdscr, nullptr);
}

void silence_standard_error() {
    const Descriptor null_device(open("/dev/null", O_WRONLY | O_CLOEXEC));
    dup2(null_device.get(), STDERR_FILENO);
}

bool is_superuser() { return getuid() == 0 && getgid() == 0; }

int refuse_user() {
    showMessage("You MUST be a superuser to run this program!", "Error!");
    delete main_window;
    main_window = nullptr;
    close_terminal();
    return 1;
}
