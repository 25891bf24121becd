#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <thread>

#include "tools/player/scene_walk.h"

/// player PROGRAM: runs the wizard through a whole demonstration. In a terminal it is played there,
/// at a pace at which it can be read; otherwise each screen is printed as text once it is filled
/// in. Ends with the wizard's exit status; an interrupt interrupts the wizard.

namespace {

volatile std::sig_atomic_t interrupted = 0;

void note_interrupt(int /*signal_number*/) { interrupted = 1; }

// Of this terminal's size, if it is one.
ProgramSetup setup_of(const char* program) {
    ProgramSetup setup{{program}};
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_row != 0) {
        setup.rows = size.ws_row;
        setup.cols = size.ws_col;
    }
    return setup;
}

// Plays scenes, on the terminal or as text.
class Player : public SceneWalk {
  public:
    explicit Player(const char* program) : SceneWalk(setup_of(program)) {}

    // Returns the wizard's exit status.
    int play() {
        const ExitStatus status = run();
        if (live)
            forward();
        else
            std::printf("%s", wizard.printedAfterwards().c_str());
        return status.code;
    }

  private:
    void show(const Scene& scene) override {
        if (!live) std::printf("\n--- %s\n\n%s", scene.name.c_str(), wizard.image().text().c_str());
        std::fflush(stdout);
    }

    // Nobody watches text being printed.
    bool pause(std::chrono::milliseconds time) override {
        const auto end = std::chrono::steady_clock::now() + time;
        while (live && !interrupted && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            forward();
        }
        return !interrupted;
    }

    // Passes on to the viewer's terminal what the wizard has written since.
    void forward() {
        wizard.image();
        const std::string output = wizard.output();
        std::fwrite(output.data() + forwarded, 1, output.size() - forwarded, stdout);
        std::fflush(stdout);
        forwarded = output.size();
    }

    bool live = isatty(STDOUT_FILENO) == 1;
    size_t forwarded = 0;
};

}  // namespace

int main(int argument_count, char** arguments) {
    if (argument_count != 2) {
        std::fprintf(stderr, "Usage: player PROGRAM\n");
        return 2;
    }
    std::signal(SIGINT, note_interrupt);
    try {
        return Player(arguments[1]).play();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "player: %s\n", failure.what());
        return 2;
    }
}
