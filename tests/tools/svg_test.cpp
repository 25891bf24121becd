#include "tools/pictures/svg.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

constexpr int blue = 4;
constexpr int red = 1;
constexpr int white = 7;

// A screen of one row that shows these characters, one in a cell.
ScreenImage row_of(const std::vector<std::string>& characters) {
    ScreenImage image(1, static_cast<int>(characters.size()));
    for (int col = 0; col < image.cols(); ++col)
        image.cell(0, col).text = characters[static_cast<size_t>(col)];
    image.setCursor({{0, 0}, false});
    return image;
}

std::string drawing_of(const ScreenImage& image) {
    return svg_of(image, "a screen");
}

bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(Svg, names_the_screen_and_keeps_characters_readable_that_mean_something_to_svg) {
    const std::string drawing = svg_of(row_of({"<", "&", ">"}), "Relay & \"more\"");
    EXPECT_TRUE(holds(drawing, "<title>Relay &amp; &quot;more&quot;</title>"));
    EXPECT_TRUE(holds(drawing, ">&lt;&amp;&gt;</text>"));
}

TEST(Svg, holds_each_word_to_its_columns) {
    const std::string drawing = drawing_of(row_of({" ", "a", "b", "c", " ", "d"}));
    EXPECT_TRUE(holds(drawing, "<text x=\"8\" y=\"13\" textLength=\"24\">abc</text>"));
    EXPECT_TRUE(holds(drawing, "<text x=\"40\" y=\"13\">d</text>"));
}

TEST(Svg, draws_bold_words_apart) {
    ScreenImage image = row_of({"a", "b"});
    image.cell(0, 1).bold = true;
    const std::string drawing = drawing_of(image);
    EXPECT_TRUE(holds(drawing, "font-weight=\"700\">\n<text x=\"8\" y=\"13\">b</text>"));
    EXPECT_TRUE(holds(drawing, "<text x=\"0\" y=\"13\">a</text>"));
}

TEST(Svg, draws_a_line_over_several_cells_as_one_stroke) {
    const std::string drawing = drawing_of(row_of({"├", "─", "─", "┤"}));
    EXPECT_TRUE(holds(drawing, "M4 9H28"));
    EXPECT_FALSE(holds(drawing, "─"));
}

TEST(Svg, draws_the_corners_of_a_box_to_the_middle_of_their_cells) {
    ScreenImage image(2, 2);
    image.cell(0, 0).text = "┌";
    image.cell(0, 1).text = "┐";
    image.cell(1, 0).text = "└";
    image.cell(1, 1).text = "┘";
    EXPECT_TRUE(holds(drawing_of(image), "d=\"M4 9H12M4 9V27M12 9V27M4 27H12\"/>"));
}

TEST(Svg, covers_cells_of_one_colour_with_one_rectangle) {
    ScreenImage image(4, 6);
    for (int row = 1; row < 3; ++row) {
        for (int col = 2; col < 5; ++col)
            image.cell(row, col).background = red;
    }
    const std::string drawing = drawing_of(image);
    EXPECT_TRUE(holds(drawing, "<rect x=\"16\" y=\"18\" width=\"24\" height=\"36\""));
    EXPECT_TRUE(holds(drawing, "<rect x=\"0\" y=\"0\" width=\"48\" height=\"72\""));
}

TEST(Svg, draws_different_colours_differently) {
    ScreenImage image = row_of({"a", "b"});
    image.cell(0, 0) = {"a", white, blue, false};
    image.cell(0, 1) = {"b", red, white, false};
    const std::string drawing = drawing_of(image);
    for (const char* colour : {"fill=\"#1f3f8a\"/>", "fill=\"#e6e9ef\"/>", "<g fill=\"#e6e9ef\">",
                               "<g fill=\"#c0453a\">"})
        EXPECT_TRUE(holds(drawing, colour)) << colour;
}

TEST(Svg, draws_the_cursor_only_where_it_can_be_seen) {
    ScreenImage image = row_of({" ", " "});
    const std::string hidden = drawing_of(image);
    image.setCursor({{0, 1}, true});
    EXPECT_TRUE(holds(drawing_of(image), "<rect x=\"8\" y=\"0\" width=\"8\" height=\"18\""));
    EXPECT_FALSE(holds(hidden, "<rect x=\"8\""));
}

TEST(Svg, refuses_a_colour_that_it_has_no_shade_for) {
    ScreenImage image = row_of({"a"});
    image.cell(0, 0).background = 8;
    EXPECT_THROW(drawing_of(image), std::invalid_argument);
}

}  // namespace
