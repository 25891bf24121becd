#include "ui/terminal/terminal_output.h"

#include <curses.h>
#include <fcntl.h>
#include <panel.h>
#include <poll.h>
#include <sys/resource.h>
#include <term.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>
#include <utility>

#include "ui/terminal/output_thinner.h"
#include "ui/terminal/terminal_size.h"
#include "ui/terminal/terminals.h"
#include "wizard/base/tel_help.h"
#include "wizard/system/signal_gate.h"

namespace {

constexpr int no_descriptor = -1;

// Curses writes to a descriptor of its own, which is a copy of the terminal's, and from the moment
// on that output is kept back one of the store.
int curses_descriptor = no_descriptor;
int store = no_descriptor;
bool keeps_back = false;
bool thins = false;
OutputThinner thinner;

// What is being written and how much of that has been; should the wizard end meanwhile, nobody
// knows how much while a write is under way.
std::string frame;
size_t frame_written = 0;
bool is_in_write = false;

// What leaves the screen, as long as it may have to be said again.
std::string leaving;

// The flags of standard output while it makes nobody wait.
constexpr int flags_unchanged = -1;
volatile std::sig_atomic_t flags_before = flags_unchanged;

void close_if_open(int& descriptor) {
    if (descriptor != no_descriptor)
        close(descriptor);
    descriptor = no_descriptor;
}

// A limit on the size of files (ulimit -f) holds for nameless ones too; beyond it a write fails.
bool may_write_frames() {
    rlimit files{};
    return getrlimit(RLIMIT_FSIZE, &files) == 0 && files.rlim_cur == RLIM_INFINITY;
}

FILE* stream_for_curses() {
    store = may_write_frames() ? nameless_file() : no_descriptor;
    if (store == no_descriptor)
        return stdout;
    const int terminal = screen_terminal() != no_descriptor ? screen_terminal() : STDOUT_FILENO;
    curses_descriptor = fcntl(terminal, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
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

// Writes some of it, more than nothing once the terminal takes anything.
ssize_t write_some(const char* text, size_t length) {
    const EndingsLetIn here;
    is_in_write = true;
    const ssize_t written = write(STDOUT_FILENO, text, length);
    is_in_write = false;
    if (written == -1 && errno == EAGAIN) {
        pollfd terminal = {STDOUT_FILENO, POLLOUT, 0};
        return poll(&terminal, 1, -1) == -1 ? -1 : 0;
    }
    return written;
}

void forget_frame() {
    frame.clear();
    frame_written = 0;
}

// As curses does it: a terminal that is gone must not keep the wizard from ending.
void write_frame(std::string text) {
    frame = std::move(text);
    while (frame_written < frame.size()) {
        const ssize_t more = write_some(frame.data() + frame_written, frame.size() - frame_written);
        if (more == -1 && errno != EINTR)
            break;
        frame_written += more > 0 ? static_cast<size_t>(more) : 0;
    }
    forget_frame();
}

// A clock that nobody sets.
long milliseconds() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<long>(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}

// Whether standard output takes anything within that time.
bool takes_output(long within_milliseconds) {
    pollfd output = {STDOUT_FILENO, POLLOUT, 0};
    return within_milliseconds >= 0 && poll(&output, 1, static_cast<int>(within_milliseconds)) == 1;
}

// From now on nothing that is written makes anybody wait.
void silence_output() {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere == no_descriptor)
        return;
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
}

// Nobody will ever read what is written: a pipe without its reader, a terminal that is gone.
bool nobody_reads() {
    pollfd output = {STDOUT_FILENO, 0, 0};
    return poll(&output, 1, 0) == 1 && (output.revents & (POLLERR | POLLHUP)) != 0;
}

// What curses has said since the last call.
std::string take_from_store() {
    const off_t length = lseek(store, 0, SEEK_CUR);
    if (length <= 0)
        return {};
    std::string said(static_cast<size_t>(length), '\0');
    const ssize_t count = pread(store, said.data(), said.size(), 0);
    lseek(store, 0, SEEK_SET);
    said.resize(count < 0 ? 0 : static_cast<size_t>(count));
    return said;
}

std::string thinned(const std::string& said) {
    return thins ? thinner.thin(said) : said;
}

// What makes the text plain, whatever the terminal has been told.
std::string plain_text() {
    static std::string sequence;
    sequence.clear();
    if (exit_attribute_mode != nullptr)
        tputs(exit_attribute_mode, 1, [](int character) {
            sequence += static_cast<char>(character);
            return character;
        });
    return sequence;
}

// All that is left to say, and how curses leaves the screen.
std::string last_words() {
    std::string words = thinned(take_from_store()) + thinner.settle();
    // A frame that was torn may have ended anywhere, in the middle of a sequence too.
    words = is_in_write ? plain_text() : frame.substr(frame_written) + words;
    endwin();
    return words + take_from_store();
}

void prepare_to_leave() {
    if (stdscr != nullptr && !isendwin())
        leaving = last_words();
    else if (frame.empty())
        leaving.clear();
}

// What curses does by itself where its output is not kept back.
void take_new_size() {
    const TerminalSize size = terminal_size();
    if (is_term_resized(size.rows, size.cols))
        resizeterm(size.rows, size.cols);
    thinner.forget();
}

}  // namespace

bool open_terminal() {
    remember_terminals();
    FILE* stream = stream_for_curses();
    const SizeGuard size_guard;
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
    thins = isatty(STDOUT_FILENO) != 0 && speaks_ecma_48();
    thinner = OutputThinner(repeats_as_in_ecma_48());
    return true;
}

void keep_output_back() {
    keep_terminals();
    if (curses_descriptor == no_descriptor || keeps_back)
        return;
    dup2(store, curses_descriptor);
    fcntl(curses_descriptor, F_SETFD, FD_CLOEXEC);
    keeps_back = true;
}

void send_output() {
    // Stopped and sent to the background since the last wait; only in a wait this is told.
    if (!are_terminals_in_front() && retake_terminals())
        raise(SIGWINCH);
    if (keeps_back)
        write_frame(thinned(take_from_store()));
    if (nobody_reads())
        raise(SIGHUP);
}

void show_frame() {
    update_panels();
    doupdate();
    send_output();
}

void redraw_terminal() {
    retake_terminals();
    thinner.forget();
    // Coming back to the terminal curses says all modes again.
    endwin();
    clearok(curscr, TRUE);
    doupdate();
    send_output();
}

bool write_in_time(const char* text, size_t length) {
    constexpr long limit = 500;
    const long end = milliseconds() + limit;
    const int flags = fcntl(STDOUT_FILENO, F_GETFL);
    // A crash may come in the middle of this.
    if (flags_before == flags_unchanged)
        flags_before = flags;
    fcntl(STDOUT_FILENO, F_SETFL, flags_before | O_NONBLOCK);
    while (length > 0 && takes_output(end - milliseconds())) {
        const ssize_t more = write(STDOUT_FILENO, text, length);
        if (more == -1 && errno != EAGAIN)
            break;
        text += more > 0 ? more : 0;
        length -= more > 0 ? static_cast<size_t>(more) : 0;
    }
    fcntl(STDOUT_FILENO, F_SETFL, flags_before);
    flags_before = flags_unchanged;
    return length == 0;
}

void close_terminal() {
    prepare_to_leave();
    write_frame(leaving);
    give_terminals_back();
}

void close_terminal_in_time(const char* farewell) {
    if (!keeps_back && !takes_output(0))
        silence_output();
    prepare_to_leave();
    const bool has_left = write_in_time(leaving.data(), leaving.size());
    give_terminals_back();
    if (has_left)
        write_in_time(farewell, std::strlen(farewell));
    leaving.clear();
    forget_frame();
}

bool renew_terminal() {
    if (!retake_terminals())
        return false;
    const SizeGuard size_guard;
    if (keeps_back)
        take_new_size();
    clear();
    // Left a second time, a terminal would go back to where it was when it was left the first time.
    if (!isendwin())
        endwin();
    refresh();
    // Curses has not seen that it came back to a terminal.
    if (keeps_back)
        keypad(stdscr, TRUE);
    return true;
}
