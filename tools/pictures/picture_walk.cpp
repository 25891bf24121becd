#include "tools/pictures/picture_walk.h"

#include "tools/pictures/svg.h"
#include "tools/player/scene_walk.h"

namespace {

bool is_empty(const ScreenImage& screen, int row) {
    return screen.rowText(row).find_first_not_of(' ') == std::string::npos;
}

// The rows that the wizard has written on after it closed its screens, and an empty one above and
// below.
ScreenImage summary_on(const ScreenImage& screen) {
    int first = 0;
    int last = screen.rows() - 1;
    while (first < last - 2 && is_empty(screen, first + 1))
        ++first;
    while (first < last - 2 && is_empty(screen, last - 1))
        --last;
    return screen.region(first, 0, last - first + 1, screen.cols());
}

class PictureWalk : public SceneWalk {
  public:
    using SceneWalk::SceneWalk;

    std::vector<Picture> draw() {
        run();
        pictures.push_back({"summary", svg_of(summary_on(wizard.image()), "Summary")});
        return pictures;
    }

  private:
    void show(const Scene& scene) override {
        if (!scene.picture.empty())
            pictures.push_back({scene.picture, svg_of(wizard.image(), scene.name)});
    }

    std::vector<Picture> pictures;
};

}  // namespace

std::vector<Picture> draw_pictures(const std::string& program) {
    return PictureWalk({{program}}).draw();
}
