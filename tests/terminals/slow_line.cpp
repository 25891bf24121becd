#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/process.h"
#include "tests/support/pty.h"
#include "tests/support/terminal_session.h"

/// slow_line MILLISECONDS BAUD PROGRAM [ARGUMENT...]: runs a program in a terminal at the other end
/// of a slow line. What the program writes and what is typed arrives so much later, at most so many
/// bits a second in each direction (ten to a byte; 0: at once). The size of the terminal goes
/// along. Ends with the program's exit status, or 128 and the signal's number if one killed it;
/// ends the program when its own terminal is gone.

namespace {

using Clock = std::chrono::steady_clock;

// One direction of the line: bytes come out in their order, each some time after it went in, and no
// faster than the line's speed.
class DelayLine {
  public:
    // `delay` is how long a byte is on its way, `byte_time` how long the line is busy with it.
    DelayLine(Clock::duration delay, Clock::duration byte_time)
        : delay(delay), byteTime(byte_time) {}

    void put(const std::string& bytes) {
        for (const char value : bytes) {
            lastArrival = std::max(Clock::now() + delay, lastArrival) + byteTime;
            underWay.emplace_back(lastArrival, value);
        }
    }

    // What has arrived since the last call.
    std::string take() {
        std::string arrived;
        for (; nextArrival() <= Clock::now(); underWay.pop_front())
            arrived += underWay.front().second;
        return arrived;
    }

    bool isEmpty() const { return underWay.empty(); }

    // When the next byte arrives; in the far future if none is under way.
    Clock::time_point nextArrival() const {
        return isEmpty() ? Clock::time_point::max() : underWay.front().first;
    }

  private:
    Clock::duration delay;
    Clock::duration byteTime;
    Clock::time_point lastArrival;
    std::deque<std::pair<Clock::time_point, char>> underWay;
};

volatile std::sig_atomic_t resized = 0;

void note_resize(int /*signal_number*/) { resized = 1; }

winsize terminal_size() {
    winsize size{};
    checked(ioctl(STDIN_FILENO, TIOCGWINSZ, &size), "TIOCGWINSZ");
    return size;
}

// This end of the line hands every byte on as it comes.
class RawTerminal {
  public:
    RawTerminal() {
        checked(tcgetattr(STDIN_FILENO, &before), "tcgetattr");
        termios raw = before;
        cfmakeraw(&raw);
        tcsetattr(STDIN_FILENO, TCSANOW, &raw);
    }
    ~RawTerminal() { tcsetattr(STDIN_FILENO, TCSANOW, &before); }
    RawTerminal(const RawTerminal&) = delete;
    RawTerminal& operator=(const RawTerminal&) = delete;

  private:
    termios before{};
};

void write_all(const std::string& bytes) {
    for (size_t written = 0; written < bytes.size();) {
        const ssize_t length = write(STDOUT_FILENO, bytes.data() + written, bytes.size() - written);
        if (length < 0 && errno != EINTR) return;
        written += static_cast<size_t>(std::max<ssize_t>(length, 0));
    }
}

class SlowLine {
  public:
    SlowLine(Clock::duration delay, Clock::duration byte_time, const SessionCommand& command)
        : pty(terminal_size().ws_row, terminal_size().ws_col),
          session(pty.openProgramSide(), command),
          toProgram(delay, byte_time),
          toScreen(delay, byte_time) {}

    // Returns how the program ended, once the last byte that it wrote has arrived.
    ExitStatus run() {
        while (connected) {
            const auto ended = session.ended();
            toScreen.put(pty.read());
            write_all(toScreen.take());
            if (ended && toScreen.isEmpty()) return *ended;
            waiting += toProgram.take();
            waiting.erase(0, pty.write(waiting));
            waitForNews();
        }
        return killed_by(SIGHUP);
    }

  private:
    void waitForNews() {
        pollfd waited[] = {{STDIN_FILENO, POLLIN, 0},
                           {pty.descriptor(), POLLIN, 0},
                           {session.ended() ? -1 : session.descriptor(), POLLIN, 0}};
        poll(waited, std::size(waited), millisecondsToNextArrival());
        if (resized != 0) {
            resized = 0;
            pty.resize(terminal_size().ws_row, terminal_size().ws_col);
        }
        if (waited[0].revents != 0) readKeyboard();
    }

    void readKeyboard() {
        char bytes[4096];
        const ssize_t length = read(STDIN_FILENO, bytes, sizeof(bytes));
        connected = length > 0 || (length < 0 && errno == EINTR);
        if (length > 0) toProgram.put(std::string(bytes, static_cast<size_t>(length)));
    }

    // For poll(2): -1 while nothing is under way.
    int millisecondsToNextArrival() const {
        constexpr std::chrono::milliseconds retry(10);
        Clock::time_point next = std::min(toProgram.nextArrival(), toScreen.nextArrival());
        if (!waiting.empty()) next = std::min(next, Clock::now() + retry);
        if (next == Clock::time_point::max()) return -1;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(next - Clock::now());
        return static_cast<int>(std::max<long>(left.count(), 0));
    }

    Pty pty;
    TerminalSession session;
    DelayLine toProgram;
    DelayLine toScreen;
    std::string waiting;  // has arrived, but the program's terminal has no room for it yet
    bool connected = true;
};

int run_line(int milliseconds, int baud, std::vector<std::string> program) {
    struct sigaction action {};
    action.sa_handler = note_resize;
    sigaction(SIGWINCH, &action, nullptr);
    constexpr std::chrono::nanoseconds ten_bits = std::chrono::seconds(10);
    const auto byte_time = baud > 0 ? ten_bits / baud : std::chrono::nanoseconds(0);
    const RawTerminal raw;
    SlowLine line(std::chrono::milliseconds(milliseconds), byte_time,
                  {std::move(program), changed_environment({}), ""});
    const ExitStatus status = line.run();
    return status.signal != 0 ? 128 + status.signal : status.code;
}

}  // namespace

int main(int argument_count, char** arguments) {
    if (argument_count < 4) {
        std::fprintf(stderr, "usage: slow_line MILLISECONDS BAUD PROGRAM [ARGUMENT...]\n");
        return 2;
    }
    try {
        return run_line(std::atoi(arguments[1]), std::atoi(arguments[2]),
                        {arguments + 3, arguments + argument_count});
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "slow_line: %s\n", failure.what());
        return 2;
    }
}
