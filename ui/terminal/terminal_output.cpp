#include <curses.h>
#include <fcntl.h>
#include <panel.h>
#include <poll.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <utility>

#include "ui/terminal/terminal.h"
#include "ui/terminal/terminal_record.h"
#include "wizard/base/tel_help.h"
#include "wizard/system/signal_gate.h"

namespace {

// A limit on the size of files (ulimit -f) holds for nameless ones too; beyond it a write fails.
bool may_write_frames() {
    rlimit files{};
    return getrlimit(RLIMIT_FSIZE, &files) == 0 && files.rlim_cur == RLIM_INFINITY;
}

// Of standard output: which of these events there are, within that time; for ever if that is -1.
short output_events(short events, long within_milliseconds) {
    pollfd output = {STDOUT_FILENO, events, 0};
    const bool any = poll(&output, 1, static_cast<int>(within_milliseconds)) == 1;
    return any ? output.revents : short{0};
}

bool takes_output(long within_milliseconds) {
    return within_milliseconds >= 0 && output_events(POLLOUT, within_milliseconds) != 0;
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

// A clock that nobody sets.
long milliseconds() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<long>(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}

}  // namespace

std::FILE* stream_for_curses() {
    const int terminal = size_terminal() != no_descriptor ? size_terminal() : STDOUT_FILENO;
    Descriptor store(may_write_frames() ? nameless_file() : no_descriptor);
    Descriptor copy(fcntl(terminal, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    std::FILE* stream = store.isOpen() && copy.isOpen() ? fdopen(copy.get(), "w") : nullptr;
    if (stream == nullptr) return stdout;
    copy.release();
    wizard_terminal.store = std::move(store);
    wizard_terminal.stream.reset(stream);
    return stream;
}

void keep_output_back() {
    if (wizard_terminal.stream == nullptr) return;
    const int descriptor = fileno(wizard_terminal.stream.get());
    dup2(wizard_terminal.store.get(), descriptor);
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

std::string take_output() {
    const int store = wizard_terminal.store.get();
    const off_t length = lseek(store, 0, SEEK_CUR);
    if (length <= 0) return {};
    std::string said(static_cast<size_t>(length), '\0');
    const ssize_t count = pread(store, said.data(), said.size(), 0);
    lseek(store, 0, SEEK_SET);
    said.resize(count < 0 ? 0 : static_cast<size_t>(count));
    return said;
}

std::string thinned(const std::string& said) {
    return wizard_terminal.thins ? wizard_terminal.thinner.thin(said) : said;
}

void write_frame(std::string text) {
    std::string& frame = wizard_terminal.frame;
    size_t& written = wizard_terminal.frame_written;
    frame = std::move(text);
    while (written < frame.size()) {
        const ssize_t more = write_some(frame.data() + written, frame.size() - written);
        // As curses does it: a terminal that is gone must not keep the wizard from ending.
        if (more == -1 && errno != EINTR) break;
        written += more > 0 ? static_cast<size_t>(more) : 0;
    }
    frame.clear();
    written = 0;
}

bool write_in_time(const char* text, size_t length) {
    constexpr long limit = 500;
    volatile std::sig_atomic_t& flags_before = wizard_terminal.flags_before;
    const long end = milliseconds() + limit;
    const int flags = fcntl(STDOUT_FILENO, F_GETFL);
    // A crash may come in the middle of this.
    if (flags_before == flags_unchanged) flags_before = flags;
    fcntl(STDOUT_FILENO, F_SETFL, flags_before | O_NONBLOCK);
    while (length > 0 && takes_output(end - milliseconds())) {
        const ssize_t more = write(STDOUT_FILENO, text, length);
        if (more == -1 && errno != EAGAIN) break;
        text += more > 0 ? more : 0;
        length -= more > 0 ? static_cast<size_t>(more) : 0;
    }
    fcntl(STDOUT_FILENO, F_SETFL, flags_before);
    flags_before = flags_unchanged;
    return length == 0;
}

void silence_stuck_output() {
    if (wizard_terminal.stream != nullptr || takes_output(0)) return;
    const Descriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
    if (nowhere.isOpen()) dup2(nowhere.get(), STDOUT_FILENO);
}

void send_output() {
    // Stopped and sent to the background since the last wait; only in a wait this is told.
    if (!is_in_foreground() && retake_terminal()) raise(SIGWINCH);
    write_frame(thinned(take_output()));
    // Nobody will ever read what is written.
    if ((output_events(0, 0) & (POLLERR | POLLHUP)) != 0) raise(SIGHUP);
}

void show_frame() {
    update_panels();
    doupdate();
    send_output();
}
