#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>

/// bench_floor: the least that a program can do that shows a box for a password: raw mode, one
/// write for the frame, one byte for each key, the frame anew in another size. Ends at the end of
/// input.

namespace {

constexpr int box_rows = 13;
constexpr int box_cols = 45;

char frame[4096];
int length = 0;

void add(const char* text) {
    length +=
        std::snprintf(frame + length, sizeof(frame) - static_cast<size_t>(length), "%s", text);
}

void draw() {
    winsize size{};
    ioctl(STDOUT_FILENO, TIOCGWINSZ, &size);
    const int top = (size.ws_row - box_rows) / 2;
    const int left = (size.ws_col - box_cols) / 2;
    length = 0;
    add("\033[?1049h\033[37;44m\033[2J");
    for (int row = 0; row < box_rows; ++row) {
        const bool edge = row == 0 || row == box_rows - 1;
        char place[32];
        std::snprintf(place, sizeof(place), "\033[%d;%dH", top + row + 1, left + 1);
        add(place);
        for (int col = 0; edge && col < box_cols; ++col) add("-");
        if (!edge) {
            std::snprintf(place, sizeof(place), "|\033[%dC|", box_cols - 2);
            add(place);
        }
    }
    if (write(STDOUT_FILENO, frame, static_cast<size_t>(length)) != length) _exit(1);
}

// That it is called is enough: it interrupts the read.
void on_resize(int) {}

}  // namespace

int main() {
    termios modes{};
    tcgetattr(STDIN_FILENO, &modes);
    cfmakeraw(&modes);
    tcsetattr(STDIN_FILENO, TCSANOW, &modes);
    struct sigaction action {};
    action.sa_handler = on_resize;
    sigaction(SIGWINCH, &action, nullptr);
    draw();
    for (;;) {
        char key = 0;
        const ssize_t count = read(STDIN_FILENO, &key, 1);
        if (count == -1 && errno == EINTR)
            draw();
        else if (count != 1 || write(STDOUT_FILENO, "*", 1) != 1)
            return 0;
    }
}
