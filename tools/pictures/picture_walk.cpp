#include "tools/pictures/picture_walk.h"

#include "tests/e2e/key_wait.h"
#include "tests/support/terminal_program.h"
#include "tests/support/wait_until.h"
#include "tools/pictures/svg.h"
#include "tools/player/other_programs.h"
#include "tools/player/scenes.h"

namespace {

bool is_blank(const ScreenImage& screen, int row) {
    return screen.rowText(row).find_first_not_of(' ') == std::string::npos;
}

// The rows that the wizard has written on after it closed its screens, and a blank one above and
// below.
ScreenImage summary_on(const ScreenImage& screen) {
    int first = 0;
    int last = screen.rows() - 1;
    while (first < last - 2 && is_blank(screen, first + 1))
        ++first;
    while (first < last - 2 && is_blank(screen, last - 1))
        --last;
    return screen.region(first, 0, last - first + 1, screen.cols());
}

class Walk {
  public:
    explicit Walk(const std::string& program) : wizard({{program}}) {}

    std::vector<Picture> pictures() {
        std::vector<Picture> result;
        for (const Scene& scene : demonstration()) {
            wizard.waitForText(scene.shows);
            strike(scene.answers);
            waitForKey();
            if (!scene.picture.empty())
                result.push_back({scene.picture, svg_of(wizard.image(), scene.name)});
            strike(scene.leaves);
        }
        wizard.waitExit();
        result.push_back({"summary", svg_of(summary_on(wizard.image()), "Summary")});
        return result;
    }

  private:
    void strike(const std::vector<Stroke>& strokes) {
        for (const Stroke& stroke : strokes) {
            waitForKey();
            if (const Key* key = std::get_if<Key>(&stroke))
                wizard.press(*key);
            else if (const auto* text = std::get_if<std::string>(&stroke))
                wizard.type(*text);
            else
                other_programs.endBusyOne();
        }
    }

    // What the wizard has drawn is then on the screen.
    void waitForKey() {
        const auto waits = [this] {
            wizard.image();  // reads what was drawn: nobody waits for a key who can't draw on
            return waits_for_key(wizard.pid());
        };
        wait_until(waits, "the wizard waited for a key");
    }

    OtherPrograms other_programs;
    TerminalProgram wizard;
};

}  // namespace

std::vector<Picture> draw_pictures(const std::string& program) {
    return Walk(program).pictures();
}
