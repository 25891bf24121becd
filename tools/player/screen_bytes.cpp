#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

#include "tests/support/files.h"
#include "tools/player/scene_walk.h"

/// screen_bytes PROGRAM DIRECTORY: leads the wizard PROGRAM through the demonstration in 25 lines
/// and 80 columns, with TERM and LC_ALL as they are, and keeps in DIRECTORY, a file for each screen
/// in their order, what it writes to its terminal. To be run in a sandbox with the stand-in server
/// installed.

namespace {

class Recording : public SceneWalk {
  public:
    Recording(const char* program, const char* directory)
        : SceneWalk({{program}, 25, 80, std::getenv("TERM"), std::getenv("LC_ALL")}),
          directory(directory) {}

  private:
    void show(const Scene& scene) override {
        const std::string number = std::to_string(++count);
        const std::string name = std::string(2 - number.size(), '0') + number + " " + scene.name;
        const std::string output = wizard.output();
        write_file(directory + "/" + name, output.substr(recorded));
        recorded = output.size();
    }

    std::string directory;
    int count = 0;
    size_t recorded = 0;
};

}  // namespace

int main(int argument_count, char** arguments) {
    if (argument_count != 3 || std::getenv("TERM") == nullptr || std::getenv("LC_ALL") == nullptr) {
        std::fprintf(stderr, "Usage: TERM=TERM LC_ALL=LOCALE screen_bytes PROGRAM DIRECTORY\n");
        return 2;
    }
    try {
        Recording(arguments[1], arguments[2]).run();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    return 0;
}
