#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "tests/support/files.h"
#include "tools/pictures/picture_walk.h"

namespace {

using Names = std::set<std::string>;

Names kept_pictures() {
    Names names;
    for (const auto& entry : std::filesystem::directory_iterator(KEPT_PICTURES))
        names.insert(entry.path().filename());
    return names;
}

// With the line breaks of the file, a failure shows the rows that differ.
TEST(KeptPictures, show_the_screens_as_the_wizard_draws_them_now) {
    Names drawn;
    for (const Picture& picture : draw_pictures(WIZARD_PROGRAM)) {
        const std::string name = picture.name + ".svg";
        drawn.insert(name);
        const std::string path = std::string(KEPT_PICTURES) + "/" + name;
        EXPECT_EQ(exists(path) ? read_file(path) : "", picture.svg)
            << name << " is out of date; ./demo --pictures renews it";
    }
    EXPECT_EQ(drawn, kept_pictures());
}

}  // namespace
