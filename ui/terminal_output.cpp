#include "ui/terminal_output.h"

#include <curses.h>
#include <fcntl.h>
#include <panel.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <term.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "ui/output_thinner.h"
#include "wizard/tel_help.h"

namespace {

constexpr int no_descriptor = -1;

// Curses writes to a descriptor of its own, which is a copy of standard output, or of the store
// while output is kept back; standard output itself remains the terminal always.
int curses_descriptor = no_descriptor;
int store = no_descriptor;
bool keeps_back = false;
bool thins = false;
termios modes_of_curses;
OutputThinner thinner;

void connect_curses_to(int descriptor) {
    dup2(descriptor, curses_descriptor);
    fcntl(curses_descriptor, F_SETFD, FD_CLOEXEC);
}

void close_if_open(int& descriptor) {
    if (descriptor != no_descriptor)
        close(descriptor);
    descriptor = no_descriptor;
}

// A limit on the size of files (ulimit -f) holds for nameless ones too; beyond it a write kills.
bool may_write_frames() {
    rlimit files{};
    return getrlimit(RLIMIT_FSIZE, &files) == 0 && files.rlim_cur == RLIM_INFINITY;
}

FILE* stream_for_curses() {
    const bool keeps = isatty(STDOUT_FILENO) != 0 && may_write_frames();
    store = keeps ? nameless_file() : no_descriptor;
    if (store == no_descriptor)
        return stdout;
    curses_descriptor = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    FILE* stream = curses_descriptor != no_descriptor ? fdopen(curses_descriptor, "w") : nullptr;
    if (stream != nullptr)
        return stream;
    close_if_open(curses_descriptor);
    close_if_open(store);
    return stdout;
}

// In UTF-8 lines are characters; many terminals have no other set of characters then, whatever
// their description says. A value of the user's stays, and other programs don't get ours.
SCREEN* open_curses(FILE* stream) {
    constexpr char line_characters[] = "NCURSES_NO_UTF8_ACS";
    const bool is_users = std::getenv(line_characters) != nullptr;
    if (!is_users)
        setenv(line_characters, "1", 1);
    SCREEN* screen = newterm(nullptr, stream, stdin);
    if (!is_users)
        unsetenv(line_characters);
    return screen;
}

// On others, such as "dumb", all frames would stand below one another.
bool can_move_cursor() {
    return cursor_address != nullptr || cursor_up != nullptr || cursor_home != nullptr;
}

bool repeats_as_in_ecma_48() {
    const char* repetition = repeat_char != nullptr ? tparm(repeat_char, 'x', 5) : nullptr;
    return repetition != nullptr && std::strcmp(repetition, "x\x1b[4b") == 0;
}

bool speaks_ecma_48() {
    const char* move = cursor_address != nullptr ? tgoto(cursor_address, 1, 1) : nullptr;
    return move != nullptr && std::strncmp(move, "\x1b[", 2) == 0;
}

// As curses does it: a terminal that is gone must not keep the wizard from ending.
void write_to_terminal(const std::string& text) {
    for (size_t written = 0; written < text.size();) {
        const ssize_t more = write(STDOUT_FILENO, text.data() + written, text.size() - written);
        if (more >= 0) {
            written += static_cast<size_t>(more);
        } else if (errno == EAGAIN) {
            pollfd terminal = {STDOUT_FILENO, POLLOUT, 0};
            poll(&terminal, 1, -1);
        } else if (errno != EINTR) {
            return;
        }
    }
}

// What has been kept back, ready for the terminal.
std::string take_from_store() {
    const off_t length = lseek(store, 0, SEEK_CUR);
    if (length <= 0)
        return {};
    std::string said(static_cast<size_t>(length), '\0');
    const ssize_t count = pread(store, said.data(), said.size(), 0);
    lseek(store, 0, SEEK_SET);
    said.resize(count < 0 ? 0 : static_cast<size_t>(count));
    return thins ? thinner.thin(said) : said;
}

// The lines or columns that the environment prescribes, whatever the terminal has told.
int prescribed(const char* variable, int told) {
    const char* text = std::getenv(variable);
    if (text == nullptr)
        return told;
    char* end = nullptr;
    const long value = std::strtol(text, &end, 10);
    // Where a long is no longer than an int, what doesn't fit becomes the greatest of both.
    return *end == '\0' && value > 0 && value < INT_MAX ? static_cast<int>(value) : told;
}

// Curses itself can't change the terminal's modes while its output is kept back.
void take_terminal_back() {
    tcsetattr(STDOUT_FILENO, TCSADRAIN, &modes_of_curses);
    thinner.forget();
}

// What curses does by itself where its output is not kept back.
void renew_terminal() {
    winsize size{};
    ioctl(STDOUT_FILENO, TIOCGWINSZ, &size);
    const int rows = prescribed("LINES", size.ws_row);
    const int cols = prescribed("COLUMNS", size.ws_col);
    if (is_term_resized(rows, cols))
        resizeterm(rows, cols);
    take_terminal_back();
}

}  // namespace

bool open_screen() {
    FILE* stream = stream_for_curses();
    SCREEN* screen = open_curses(stream);
    if (screen != nullptr && !can_move_cursor()) {
        endwin();
        delscreen(screen);
        screen = nullptr;
    }
    if (screen == nullptr) {
        if (stream != stdout)
            std::fclose(stream);
        return false;
    }
    def_prog_mode();
    // Some terminals leave black behind deleted characters, whatever their description says.
    idcok(stdscr, FALSE);
    thins = speaks_ecma_48();
    thinner = OutputThinner(repeats_as_in_ecma_48());
    return true;
}

void keep_output_back() {
    if (curses_descriptor == no_descriptor || keeps_back)
        return;
    tcgetattr(STDOUT_FILENO, &modes_of_curses);
    connect_curses_to(store);
    keeps_back = true;
}

void send_output() {
    if (keeps_back)
        write_to_terminal(take_from_store());
}

void show_frame() {
    update_panels();
    doupdate();
    send_output();
}

void redraw_screen() {
    if (keeps_back)
        take_terminal_back();
    // Coming back to the terminal curses says all modes again.
    endwin();
    clearok(curscr, TRUE);
    doupdate();
    send_output();
}

void close_screen() {
    if (keeps_back) {
        std::string last_words = take_from_store();
        last_words += thinner.settle();
        write_to_terminal(last_words);
        connect_curses_to(STDOUT_FILENO);
        keeps_back = false;
    }
    endwin();
}

void renew_screen() {
    if (keeps_back)
        renew_terminal();
    clear();
    // Left a second time, a terminal would go back to where it was when it was left the first time.
    if (!isendwin())
        endwin();
    refresh();
    // Curses has not seen that it came back to a terminal.
    if (keeps_back)
        keypad(stdscr, TRUE);
    keep_output_back();
}
