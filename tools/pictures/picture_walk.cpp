#include "tools/pictures/picture_walk.h"

#include "tests/support/emulator.h"
#include "tools/pictures/svg.h"
#include "tools/player/scene_walk.h"

using namespace std::chrono_literals;

namespace {

bool is_empty(const ScreenImage& screen, int row) {
    return screen.rowText(row).find_first_not_of(' ') == std::string::npos;
}

// The rows that the wizard has written on after it closed its screens, and an empty one above and
// below.
ScreenImage summary_on(const ScreenImage& screen) {
    int first = 0;
    int last = screen.rows() - 1;
    while (first < last - 2 && is_empty(screen, first + 1)) ++first;
    while (first < last - 2 && is_empty(screen, last - 1)) --last;
    return screen.region(first, 0, last - first + 1, screen.cols());
}

class PictureWalk : public SceneWalk {
  public:
    explicit PictureWalk(const ProgramSetup& setup)
        : SceneWalk(setup), terminal(setup.rows, setup.cols, setup.term) {}

    std::vector<Picture> draw() {
        run();
        record(4s);
        pictures.push_back({"summary", svg_of(summary_on(wizard.image()), "Summary")});
        pictures.push_back({"run", moving_svg_of(frames, "A whole run of the wizard")});
        return pictures;
    }

  private:
    void show(const Scene& scene) override {
        if (!scene.picture.empty())
            pictures.push_back({scene.picture, svg_of(wizard.image(), scene.name)});
    }

    bool pause(std::chrono::milliseconds time) override {
        waitForKey();
        record(frames.empty() ? 1s : time);
        return true;
    }

    // The answers are applied while nobody types: each step is a frame too, from when it is named
    // to when it is done.
    void record(std::chrono::milliseconds time) {
        const std::string output = wizard.output();
        const std::string done = "... DONE";
        for (size_t at = played; (at = output.find(done, at)) != std::string::npos; ++at)
            record(output, output.rfind('\x1b', at), 400ms);
        record(output, output.size(), time);
    }

    // What this much of the output leaves on the screen.
    void record(const std::string& output, size_t end, std::chrono::milliseconds time) {
        terminal.feed(output.substr(played, end - played));
        played = end;
        frames.push_back({terminal.image(), time});
    }

    Emulator terminal;
    size_t played = 0;  // of the output
    std::vector<Frame> frames;
    std::vector<Picture> pictures;
};

}  // namespace

std::vector<Picture> draw_pictures(const std::string& program) {
    return PictureWalk({{program}}).draw();
}
