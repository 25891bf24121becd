// Images of screens, and the expectations that compare them.

#include "tests/support/expect_screen.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>

#include "tests/support/failure_of.h"
#include "tests/support/files.h"
#include "tests/support/golden.h"
#include "tests/support/screen_text.h"
#include "tests/support/terminal_program.h"

namespace {

void write(ScreenImage& image, int row, int col, const std::string& text) {
    for (const char character : text) image.cell(row, col++).text = character;
}

TEST(ScreenImage, finds_the_topmost_then_leftmost_place_counted_in_cells) {
    ScreenImage image(3, 8);
    image.cell(1, 0).text = "│";
    image.cell(1, 1).text = "日";
    image.cell(1, 2).text = "";
    write(image, 1, 6, "OK");
    write(image, 1, 3, "OK");
    write(image, 2, 0, "OK");
    EXPECT_EQ(image.find("OK"), (Position{1, 3}));
    EXPECT_EQ(image.find("OKOK"), std::nullopt) << "goes on from one row to the next";
    EXPECT_THROW(image.region(2, 1, 2, 2), std::out_of_range);
}

ScreenImage small_screen() {
    ScreenImage image(2, 6);
    image.cell(0, 0) = {"O", 7, 4, true};
    image.cell(0, 1) = {"K", 3, 2, true};
    image.cell(0, 2) = {" ", 7, 4, true};
    image.cell(0, 3) = {" ", 3, 2, false};
    image.cell(1, 0) = {"│", 0, 1, false};
    image.cell(1, 1) = {"x", 3, 2, true};
    image.setCursor({{1, 4}, true});
    return image;
}

const char* const small_text =
    "OK    |\n"
    "│x    |\n"
    "colours\n"
    "B0b1..|\n"
    "r0....|\n"
    "cursor 1,4\n"
    ". = default on default\n"
    "0 = bold yellow on green\n"
    "1 = blank on green\n"
    "B = bold white on blue\n"
    "b = white on blue\n"
    "r = black on red\n";

TEST(ExpectScreen, compares_characters_or_looks_and_shows_both_sides_when_they_differ) {
    EXPECT_PICTURE(small_screen(), "\nOK\n│x\n");
    EXPECT_PICTURE(small_screen(), "OK\n│x   ");
    EXPECT_EQ(failure_of([] { EXPECT_PICTURE(small_screen(), "OK\n│y\n"); }),
              "the picture of small_screen() is not what was expected\n"
              "  expected   drawn\n"
              "  OK         OK\n"
              "! │y         │x\n");
    EXPECT_NE(failure_of([] { EXPECT_PICTURE(small_screen(), "OK\n"); }), "");
    EXPECT_COLOURS(small_screen(), "\nB0b1..\nr0....\n");
    EXPECT_NE(failure_of([] { EXPECT_COLOURS(small_screen(), "B0b1..\nR0....\n"); }), "");
    EXPECT_NE(failure_of([] { EXPECT_COLOURS(small_screen(), "B0b1\nr0....\n"); }), "");
}

TEST(ExpectScreen, passes_over_what_a_blank_hides_and_nothing_else) {
    ScreenImage other = small_screen();
    other.cell(0, 2).foreground = default_colour;
    EXPECT_SAME_LOOK(small_screen(), other);
    other.cell(0, 2).background = 1;
    const std::string failure = failure_of([&] { EXPECT_SAME_LOOK(small_screen(), other); });
    EXPECT_NE(failure.find("other, compared with small_screen(), is not what was expected"),
              std::string::npos)
        << failure;
}

class Golden : public testing::Test {
  protected:
    TempDir dir;
    GoldenFile file{dir / "some_test.cpp", "golden/small"};

    // The tests themselves may be run to rewrite golden files.
    Golden() { unsetenv("UPDATE_GOLDEN"); }
    ~Golden() override { unsetenv("UPDATE_GOLDEN"); }

    std::string failureOf(const ScreenImage& image) {
        return failure_of([&] { EXPECT_PRED_FORMAT2(screen_matches_golden, image, file); });
    }
};

TEST_F(Golden, a_file_is_written_only_when_told_so_in_a_run_that_fails) {
    ScreenImage screen = small_screen();
    EXPECT_EQ(failureOf(screen), "there is no " + file.path() +
                                     "; UPDATE_GOLDEN=1 writes it from this:\n" + small_text);
    EXPECT_FALSE(exists(file.path()));
    setenv("UPDATE_GOLDEN", "1", 1);
    EXPECT_NE(failureOf(screen).find("written anew"), std::string::npos);
    EXPECT_EQ(read_file(file.path()), small_text);
    EXPECT_EQ(failureOf(screen), "");
    unsetenv("UPDATE_GOLDEN");
    EXPECT_EQ(failureOf(screen), "");
    screen.setCursor({{0, 2}, false});
    EXPECT_NE(failureOf(screen).find("! cursor 1,4                 cursor hidden\n"),
              std::string::npos)
        << failureOf(screen);
    EXPECT_EQ(read_file(file.path()), small_text);
}

TEST(GoldenOfThisTest, is_found_beside_this_source_and_a_program_comes_to_look_like_it) {
    ProgramSetup setup{{"sh", "-c", R"(printf '\33[1;37;44m%s\33[m\33[H' hello; exec sleep 1000)"}};
    setup.rows = 2;
    setup.cols = 10;
    TerminalProgram program(setup);
    EXPECT_SCREEN(program, "golden/greeting");
}

}  // namespace
