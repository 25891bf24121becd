#include "wizard/start_up.h"

#include <curses.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "ui/main_window.h"
#include "ui/message_dialogs.h"
#include "ui/terminal/terminal.h"
#include "ui/window.h"
#include "wizard/terminal_session.h"

void fill_standard_descriptors() {
    int descriptor = 0;
    do {
        descriptor = open("/dev/null", O_RDWR);
    } while (descriptor != -1 && descriptor <= STDERR_FILENO);
    if (descriptor != -1)
        close(descriptor);
}

void start_curses() {
    if (!open_terminal()) {
        // In curses' own words, as the library may well be there.
        const char* type = std::getenv("TERM");
        std::fprintf(stderr, "Error opening terminal: %s.\nTry TERM=xterm-256color.\n",
                     type != nullptr ? type : "unknown");
        std::printf("You must install ncurses library\n");
        std::exit(1);
    }
    check_terminal_size();
    define_colours();
    draw_background();
    main_window = new Window(stdscr, nullptr);
}

void silence_standard_error() {
    const int null_device = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (null_device == -1)
        return;
    dup2(null_device, STDERR_FILENO);
    close(null_device);
}

bool is_superuser() {
    return getuid() == 0 && getgid() == 0;
}

int refuse_user() {
    showMessage("You MUST be a superuser to run this program!", "Error!");
    delete main_window;
    main_window = nullptr;
    close_terminal();
    return 1;
}
