#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <exception>
#include <string>
#include <utility>

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
        for (; !isEmpty() && underWay.front().first <= Clock::now(); underWay.pop_front())
            arrived += underWay.front().second;
        return arrived;
    }

    bool isEmpty() const { return underWay.empty(); }

  private:
    Clock::duration delay;
    Clock::duration byteTime;
    Clock::time_point lastArrival;
    std::deque<std::pair<Clock::time_point, char>> underWay;
};

winsize terminal_size() {
    winsize size{};
    ioctl(STDIN_FILENO, TIOCGWINSZ, &size);
    return size;
}

// Returns how the program ended, once the last byte that it wrote has arrived.
ExitStatus run_over(DelayLine to_program, DelayLine to_screen, const SessionCommand& command) {
    Pty pty(terminal_size().ws_row, terminal_size().ws_col);
    TerminalSession session(pty.openProgramSide(), command);
    std::string waiting;  // has arrived, but the program's terminal has no room for it yet
    for (;;) {
        const auto ended = session.ended();
        to_screen.put(pty.read());
        const std::string arrived = to_screen.take();
        std::fwrite(arrived.data(), 1, arrived.size(), stdout);
        std::fflush(stdout);
        if (ended && to_screen.isEmpty()) return *ended;
        waiting += to_program.take();
        waiting.erase(0, pty.write(waiting));
        pty.resize(terminal_size().ws_row, terminal_size().ws_col);
        pollfd keyboard = {STDIN_FILENO, POLLIN, 0};
        constexpr int tick = 5;  // finer than anybody sees
        if (poll(&keyboard, 1, tick) != 1) continue;
        char bytes[4096];
        const ssize_t length = read(STDIN_FILENO, bytes, sizeof(bytes));
        if (length <= 0) return killed_by(SIGHUP);
        to_program.put(std::string(bytes, static_cast<size_t>(length)));
    }
}

// This end of the line hands every byte on as it comes.
int run_line(int milliseconds, int baud, const SessionCommand& command, termios modes) {
    cfmakeraw(&modes);
    checked(tcsetattr(STDIN_FILENO, TCSANOW, &modes), "tcsetattr");
    constexpr std::chrono::nanoseconds ten_bits = std::chrono::seconds(10);
    const auto byte_time = baud > 0 ? ten_bits / baud : std::chrono::nanoseconds(0);
    const DelayLine line(std::chrono::milliseconds(milliseconds), byte_time);
    const ExitStatus status = run_over(line, line, command);
    return status.signal != 0 ? 128 + status.signal : status.code;
}

}  // namespace

int main(int argument_count, char** arguments) {
    if (argument_count < 4) {
        std::fprintf(stderr, "usage: slow_line MILLISECONDS BAUD PROGRAM [ARGUMENT...]\n");
        return 2;
    }
    termios before{};
    tcgetattr(STDIN_FILENO, &before);
    int status = 2;
    try {
        status = run_line(
            std::atoi(arguments[1]), std::atoi(arguments[2]),
            {{arguments + 3, arguments + argument_count}, changed_environment({}), ""}, before);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "slow_line: %s\n", failure.what());
    }
    tcsetattr(STDIN_FILENO, TCSANOW, &before);
    return status;
}
