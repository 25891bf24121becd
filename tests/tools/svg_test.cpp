// What the kept pictures do not show.

#include "tools/pictures/svg.h"

#include <gtest/gtest.h>

#include "tests/tools/thrown_by.h"

namespace {

// A screen of one row that shows these characters, one in a cell.
ScreenImage row_of(const std::vector<std::string>& characters) {
    ScreenImage image(1, static_cast<int>(characters.size()));
    for (int col = 0; col < image.cols(); ++col)
        image.cell(0, col).text = characters[static_cast<size_t>(col)];
    image.setCursor({{0, 1}, false});
    return image;
}

bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(Svg, keeps_characters_readable_that_mean_something_to_it) {
    const std::string drawing = svg_of(row_of({"<", "&", ">"}), "Relay & \"more\"");
    EXPECT_TRUE(holds(drawing, "<title>Relay &amp; &quot;more&quot;</title>"));
    EXPECT_TRUE(holds(drawing, ">&lt;&amp;&gt;</text>"));
}

TEST(Svg, draws_the_cursor_only_where_it_can_be_seen) {
    ScreenImage image = row_of({" ", " "});
    const std::string cursor = "<rect x=\"8\" y=\"0\" width=\"8\" height=\"18\"";
    EXPECT_FALSE(holds(svg_of(image, ""), cursor));
    image.setCursor({{0, 1}, true});
    EXPECT_TRUE(holds(svg_of(image, ""), cursor));
}

TEST(Svg, refuses_a_colour_that_it_has_no_shade_for) {
    ScreenImage image = row_of({"a"});
    image.cell(0, 0).background = 8;
    EXPECT_EQ(thrown_by([&] { svg_of(image, ""); }), "there is no shade for colour 8");
}

std::vector<Frame> frames_of(const std::vector<std::pair<std::string, int>>& characters) {
    std::vector<Frame> frames;
    for (const auto& [character, milliseconds] : characters)
        frames.push_back({row_of({character, " ", "z"}), std::chrono::milliseconds(milliseconds)});
    return frames;
}

TEST(MovingSvg, shows_each_element_while_it_is_on_the_screen) {
    const std::string drawing =
        moving_svg_of(frames_of({{"a", 100}, {"b", 200}, {"b", 100}, {"a", 400}}), "");
    EXPECT_TRUE(holds(drawing, "g{animation:800ms step-end infinite}\n"));
    EXPECT_TRUE(holds(drawing,
                      "t0{0%{visibility:visible}12.5%{visibility:hidden}"
                      "50%{visibility:visible}}\n"));
    EXPECT_TRUE(holds(drawing,
                      "t1{0%{visibility:hidden}12.5%{visibility:visible}"
                      "50%{visibility:hidden}}\n"));
    EXPECT_TRUE(holds(drawing,
                      "<g style=\"animation-name:t0\">\n"
                      "<text x=\"0\" y=\"13\">a</text>\n</g>\n"));
    EXPECT_TRUE(holds(drawing,
                      "<g style=\"animation-name:t1\" visibility=\"hidden\">\n"
                      "<text x=\"0\" y=\"13\">b</text>\n</g>\n"));
}

TEST(MovingSvg, leaves_alone_what_is_always_there) {
    const std::string drawing = moving_svg_of(frames_of({{"a", 1}, {"b", 1}}), "");
    EXPECT_TRUE(holds(drawing, "</g>\n<text x=\"16\" y=\"13\">z</text>\n<g"));
}

}  // namespace
