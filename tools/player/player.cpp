#include <sys/ioctl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <thread>

#include "tests/support/terminal_program.h"
#include "tools/player/other_programs.h"
#include "tools/player/scenes.h"

/// player PROGRAM: runs the wizard through a whole demonstration. In a terminal it is played there,
/// at a pace at which it can be read; otherwise each screen is printed as text once it is filled
/// in. Ends with the wizard's exit status; an interrupt interrupts the wizard.

namespace {

volatile std::sig_atomic_t interrupted = 0;

void note_interrupt(int /*signal_number*/) {
    interrupted = 1;
}

struct Size {
    int rows = 24;
    int cols = 80;
};

Size terminal_size() {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_row == 0)
        return {};
    return {size.ws_row, size.ws_col};
}

// Plays scenes, on the terminal or as text.
class Player {
  public:
    Player(const char* program, Size size)
        : wizard({{program}, size.rows, size.cols}), live(isatty(STDOUT_FILENO) == 1) {}

    // Returns the wizard's exit status.
    int play(const std::vector<Scene>& scenes) {
        for (const Scene& scene : scenes) {
            if (!playScene(scene))
                break;
        }
        const ExitStatus status = wizard.waitExit();
        if (live)
            forward();
        else
            std::printf("%s", wizard.printedAfterwards().c_str());
        return status.code;
    }

  private:
    // Returns false when the viewer has interrupted it.
    bool playScene(const Scene& scene) {
        wizard.waitForText(scene.shows);
        strike(scene.answers);
        pause(std::chrono::milliseconds(1200));
        if (!live)
            print(scene);
        strike(scene.leaves);
        if (!interrupted)
            return true;
        wizard.press(Key::ctrl_c);
        return false;
    }

    void strike(const std::vector<Stroke>& strokes) {
        for (const Stroke& stroke : strokes) {
            if (const Key* key = std::get_if<Key>(&stroke))
                strikeKey(*key);
            else if (const auto* text = std::get_if<std::string>(&stroke))
                strikeText(*text);
            else
                other_programs.endBusyOne();
        }
        wizard.waitQuiet();
    }

    void strikeKey(Key key) {
        pause(std::chrono::milliseconds(300));
        if (!interrupted)
            wizard.press(key);
    }

    void strikeText(const std::string& text) {
        for (const char character : text) {
            pause(std::chrono::milliseconds(90));
            if (!interrupted)
                wizard.type(std::string(1, character));
        }
    }

    // Gives the viewer time; nobody watches text being printed.
    void pause(std::chrono::milliseconds time) {
        if (!live)
            return;
        const auto end = std::chrono::steady_clock::now() + time;
        while (!interrupted && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            forward();
        }
    }

    // Passes on to the viewer's terminal what the wizard has written since.
    void forward() {
        wizard.image();
        const std::string output = wizard.output();
        std::fwrite(output.data() + forwarded, 1, output.size() - forwarded, stdout);
        std::fflush(stdout);
        forwarded = output.size();
    }

    void print(const Scene& scene) {
        std::printf("\n--- %s\n\n%s", scene.name.c_str(), wizard.image().text().c_str());
        std::fflush(stdout);
    }

    OtherPrograms other_programs;
    TerminalProgram wizard;
    bool live;
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
        return Player(arguments[1], terminal_size()).play(demonstration());
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "player: %s\n", failure.what());
        return 2;
    }
}
