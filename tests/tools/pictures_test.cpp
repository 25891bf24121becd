#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
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

// As long as somebody looks at it, and soon loaded.
TEST(KeptPictures, play_a_whole_run_within_a_minute) {
    const std::string picture = read_file(KEPT_PICTURES "/run.svg");
    EXPECT_LT(picture.size(), 300'000U);
    std::smatch duration;
    ASSERT_TRUE(
        std::regex_search(picture, duration, std::regex("animation:([0-9]+)ms .*infinite")));
    EXPECT_GE(std::stoi(duration[1]), 30'000);
    EXPECT_LE(std::stoi(duration[1]), 60'000);
}

}  // namespace
