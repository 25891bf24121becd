#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string>

#include "tests/support/files.h"
#include "tests/support/wait_until.h"
#include "tools/player/scene_walk.h"

/// terminal_walk PROGRAM DIRECTORY: leads the wizard PROGRAM through the demonstration and shows on
/// the terminal in which this runs, of its size and type, what the wizard writes to its own.
///
/// Who looks on is told by files in DIRECTORY: `shown` holds a number that grows whenever something
/// has been shown, and the name of the screen. The walk goes on when that file is removed; until
/// then the wizard follows the size of the terminal. In the end there is `ended`, or `failure` with
/// the reason. To be run in a sandbox with the stand-in server installed.

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

winsize terminal_size() {
    winsize size{};
    ioctl(STDOUT_FILENO, TIOCGWINSZ, &size);
    return size;
}

ProgramSetup setup_of(const std::string& program) {
    const winsize size = terminal_size();
    return {{program}, size.ws_row, size.ws_col, variable("TERM"), variable("LC_ALL")};
}

/// The terminal's keyboard gives what it answers, at once and unseen.
void set_raw_mode() {
    termios modes{};
    tcgetattr(STDIN_FILENO, &modes);
    cfmakeraw(&modes);
    tcsetattr(STDIN_FILENO, TCSANOW, &modes);
}

class Showing : public SceneWalk {
  public:
    Showing(const std::string& program, const std::string& directory)
        : SceneWalk(setup_of(program)), file(directory + "/shown") {}

  private:
    void show(const Scene& scene) override {
        copyOutput();
        tell(scene.name);
        const auto goes_on = [&] {
            followSize(scene.name);
            return !exists(file);
        };
        wait_until(goes_on, "somebody had looked at " + scene.name);
    }

    void followSize(const std::string& name) {
        const winsize now = terminal_size();
        if (now.ws_row == size.ws_row && now.ws_col == size.ws_col) return;
        size = now;
        wizard.resize(size.ws_row, size.ws_col);
        waitForKey();
        copyOutput();
        tell(name);
    }

    // Written aside first, so that nobody reads a piece of it.
    void tell(const std::string& name) {
        write_file(file + ".new", std::to_string(++count) + " " + name + "\n");
        std::rename((file + ".new").c_str(), file.c_str());
    }

    void copyOutput() {
        const std::string output = wizard.output();
        while (copied < output.size()) {
            const ssize_t more =
                write(STDOUT_FILENO, output.data() + copied, output.size() - copied);
            if (more < 0) throw std::runtime_error("the terminal is gone");
            copied += static_cast<size_t>(more);
        }
        waitForTerminal();
    }

    // Where its cursor is, a terminal tells when it has come to the question.
    static void waitForTerminal() {
        constexpr int patience_ms = 5000;
        if (write(STDOUT_FILENO, "\x1b[6n", 4) != 4) return;
        pollfd keyboard{STDIN_FILENO, POLLIN, 0};
        char byte = 0;
        while (byte != 'R' && poll(&keyboard, 1, patience_ms) == 1) {
            if (read(STDIN_FILENO, &byte, 1) != 1) return;
        }
    }

    std::string file;
    winsize size = terminal_size();
    size_t copied = 0;
    int count = 0;
};

}  // namespace

int main(int argument_count, char** arguments) {
    if (argument_count != 3) {
        std::fprintf(stderr, "Usage: terminal_walk PROGRAM DIRECTORY\n");
        return 2;
    }
    const std::string directory = arguments[2];
    try {
        set_raw_mode();
        Showing(arguments[1], directory).run();
        write_file(directory + "/ended", "");
    } catch (const std::exception& failure) {
        write_file(directory + "/failure", failure.what());
        return 1;
    }
    return 0;
}
