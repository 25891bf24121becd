#include <curses.h>
#include <fcntl.h>
#include <panel.h>
#include <poll.h>
#include <term.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>

#include "ui/terminal/terminal.h"
#include "ui/terminal/terminal_record.h"
#include "wizard/system/signal_gate.h"

namespace {

using Clock = std::chrono::steady_clock;

// Of standard output: which of these events there are, within that time; for ever if that is -1.
short output_events(short events, long long within_milliseconds) {
    pollfd output = {STDOUT_FILENO, events, 0};
    poll(&output, 1, static_cast<int>(within_milliseconds));
    return output.revents;
}

bool takes_output(Clock::duration within) {
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(within).count();
    return milliseconds >= 0 && output_events(POLLOUT, milliseconds) != 0;
}

// Writes some of it, more than nothing once the terminal takes anything.
ssize_t write_some(const char* text, size_t length) {
    const ChangedMask here = let_endings_in();
    wizard_terminal.is_in_write = true;
    const ssize_t written = write(STDOUT_FILENO, text, length);
    wizard_terminal.is_in_write = false;
    if (written == -1 && errno == EAGAIN) return output_events(POLLOUT, -1) == 0 ? -1 : 0;
    return written;
}

// What curses has said since the last call.
std::string take_output() {
    const int store = wizard_terminal.store.get();
    const off_t length = std::max<off_t>(lseek(store, 0, SEEK_CUR), 0);
    std::string said(static_cast<size_t>(length), '\0');
    const ssize_t count = pread(store, said.data(), said.size(), 0);
    said.resize(static_cast<size_t>(std::max<ssize_t>(count, 0)));
    lseek(store, 0, SEEK_SET);
    return said;
}

// What to write instead of it.
std::string thinned(const std::string& said) {
    return wizard_terminal.thins ? wizard_terminal.thinner.thin(said) : said;
}

// Writes the frame to the end, as far as there is anybody who reads it.
void write_frame() {
    std::string& frame = wizard_terminal.frame;
    size_t& written = wizard_terminal.frame_written;
    for (written = 0; written < frame.size();) {
        const ssize_t more = write_some(frame.data() + written, frame.size() - written);
        // As curses does it: a terminal that is gone must not keep the wizard from ending.
        if (more == -1 && errno != EINTR) break;
        written += more > 0 ? static_cast<size_t>(more) : 0;
    }
    frame.clear();
}

// Has the frame say all that is left to say, and how curses leaves the terminal. Where a signal
// interrupts the writing of just that, it is said again.
void leave() {
    if (stdscr == nullptr || isendwin()) return;
    Terminal& terminal = wizard_terminal;
    std::string words = thinned(take_output());
    terminal.thinner.forget();
    words += thinned({});
    // A frame that was torn may have ended anywhere, in the middle of a sequence too.
    terminal.frame = terminal.is_in_write ? description(exit_attribute_mode)
                                          : terminal.frame.erase(0, terminal.frame_written) + words;
    endwin();
    terminal.frame += take_output();
}

// Where curses writes by itself and standard output takes nothing: from now on nobody waits for it.
void silence_stuck_output() {
    if (wizard_terminal.stream != nullptr || takes_output(Clock::duration::zero())) return;
    const Descriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
    if (nowhere.isOpen()) dup2(nowhere.get(), STDOUT_FILENO);
}

}  // namespace

bool write_in_time(std::string_view text) {
    volatile std::sig_atomic_t& flags_before = wizard_terminal.flags_before;
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(500);
    const int flags = fcntl(STDOUT_FILENO, F_GETFL);
    // A crash may come in the middle of this.
    if (flags_before == flags_unchanged) flags_before = flags;
    fcntl(STDOUT_FILENO, F_SETFL, flags_before | O_NONBLOCK);
    while (!text.empty() && takes_output(end - Clock::now())) {
        const ssize_t more = write(STDOUT_FILENO, text.data(), text.size());
        if (more == -1 && errno != EAGAIN) break;
        text.remove_prefix(more > 0 ? static_cast<size_t>(more) : 0);
    }
    fcntl(STDOUT_FILENO, F_SETFL, flags_before);
    flags_before = flags_unchanged;
    return text.empty();
}

void send_output() {
    // Stopped and sent to the background since the last wait; only in a wait this is told.
    if (!is_in_foreground() && retake_terminal()) raise(SIGWINCH);
    wizard_terminal.frame = thinned(take_output());
    write_frame();
    // Nobody will ever read what is written.
    if ((output_events(0, 0) & (POLLERR | POLLHUP)) != 0) raise(SIGHUP);
}

void show_frame() {
    update_panels();
    doupdate();
    send_output();
}

void close_terminal() {
    leave();
    write_frame();
    give_modes_back();
}

void close_terminal_in_time(const char* last_words) {
    silence_stuck_output();
    leave();
    const bool has_left = write_in_time(wizard_terminal.frame);
    give_modes_back();
    if (has_left) write_in_time(last_words);
    wizard_terminal.frame.clear();
}
