// The pictures that the documents show.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>

#include "tests/support/files.h"
#include "tools/pictures/picture_walk.h"
#include "tools/pictures/svg.h"

namespace {

using Names = std::set<std::string>;

// With the line breaks of the file, a failure shows the rows that differ.
TEST(KeptPictures, show_the_screens_as_the_wizard_draws_them_now) {
    Names kept;
    for (const auto& entry : std::filesystem::directory_iterator(KEPT_PICTURES))
        kept.insert(entry.path().filename());
    Names drawn;
    for (const Picture& picture : draw_pictures(WIZARD_PROGRAM)) {
        const std::string name = picture.name + ".svg";
        drawn.insert(name);
        const std::string path = std::string(KEPT_PICTURES) + "/" + name;
        EXPECT_EQ(exists(path) ? read_file(path) : "", picture.svg)
            << name << " is out of date; ./demo --pictures renews it";
    }
    EXPECT_EQ(drawn, kept);
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

TEST(Svg, keeps_readable_what_means_something_to_it_and_refuses_a_colour_without_a_shade) {
    ScreenImage image(1, 3);
    for (const int col : {0, 1, 2}) image.cell(0, col).text = std::string("<&>").substr(col, 1);
    const std::string drawing = svg_of(image, "Relay & \"more\"");
    EXPECT_NE(drawing.find("<title>Relay &amp; &quot;more&quot;</title>"), std::string::npos);
    EXPECT_NE(drawing.find(">&lt;&amp;&gt;</text>"), std::string::npos);
    image.cell(0, 0).background = 8;
    EXPECT_THROW(svg_of(image, ""), std::invalid_argument);
}

}  // namespace
