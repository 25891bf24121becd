#include "tools/pictures/picture_walk.h"

#include "tools/pictures/scene_walk.h"
#include "tools/pictures/svg.h"

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

}  // namespace

std::vector<Picture> draw_pictures(const std::string& program) {
    std::vector<Picture> pictures;
    SceneWalk walk({{program}});
    walk.run([&](const Scene& scene) {
        if (!scene.picture.empty())
            pictures.push_back({scene.picture, svg_of(walk.terminal().image(), scene.name)});
    });
    pictures.push_back({"summary", svg_of(summary_on(walk.terminal().image()), "Summary")});
    return pictures;
}
