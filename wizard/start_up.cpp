#include "wizard/start_up.h"

#include <curses.h>
#include <fcntl.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>

#include "ui/colours.h"
#include "ui/main_window.h"
#include "ui/message_dialogs.h"
#include "ui/terminal/crash_guard.h"
#include "ui/terminal/key_sequences.h"
#include "ui/terminal/terminal_output.h"
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
    // Without the locale's character set curses draws lines as letters on UTF-8 terminals.
    std::setlocale(LC_CTYPE, "");
    if (!open_terminal()) {
        // In curses' own words, as the library may well be there.
        const char* type = std::getenv("TERM");
        std::fprintf(stderr, "Error opening terminal: %s.\nTry TERM=xterm-256color.\n",
                     type != nullptr ? type : "unknown");
        std::printf("You must install ncurses library\n");
        std::exit(1);
    }
    std::atexit(close_terminal);
    guard_terminal_against_crashes();
    start_color();
    cbreak();
    noecho();
    // An interrupt key that threw away the key before it would leave curses reading a key that is
    // not there, deaf to the interrupt.
    noqiflush();
    keep_output_back();
    // Behind an Escape curses waits for the rest of a key, deaf to the interrupt; by itself for a
    // second.
    if (std::getenv("ESCDELAY") == nullptr)
        set_escdelay(200);
    keypad(stdscr, TRUE);
    learn_key_sequences();
    check_terminal_size();
    init_pair(pair_focus, COLOR_WHITE, COLOR_BLACK);
    init_pair(pair_screen, COLOR_WHITE, COLOR_BLUE);
    init_pair(pair_button, COLOR_BLACK, COLOR_RED);
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
