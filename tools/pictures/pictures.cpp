#include <cstdio>
#include <exception>
#include <string>

#include "tests/support/files.h"
#include "tools/pictures/picture_walk.h"

/// pictures PROGRAM DIRECTORY: draws every screen of the wizard PROGRAM into DIRECTORY, an SVG file
/// each, and one that plays a whole run. To be run in a sandbox with the stand-in server installed.

int main(int argument_count, char** arguments) {
    if (argument_count != 3) {
        std::fprintf(stderr, "Usage: pictures PROGRAM DIRECTORY\n");
        return 2;
    }
    try {
        for (const Picture& picture : draw_pictures(arguments[1])) {
            const std::string path = std::string(arguments[2]) + "/" + picture.name + ".svg";
            write_file(path, picture.svg);
            std::printf("%s, %zu bytes\n", path.c_str(), picture.svg.size());
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "pictures: %s\n", failure.what());
        return 1;
    }
    return 0;
}
