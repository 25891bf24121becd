#include "tests/support/golden.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/failure_of.h"
#include "tests/support/files.h"
#include "tests/support/screen_text.h"
#include "tests/support/terminal_program.h"

namespace {

ScreenImage greeting(const std::string& name) {
    ScreenImage image(2, 10);
    for (size_t i = 0; i < name.size(); ++i)
        image.cell(0, static_cast<int>(i)) = {name.substr(i, 1), 7, 4, true};
    return image;
}

class Golden : public testing::Test {
  protected:
    TempDir dir;
    GoldenFile file{dir / "some_test.cpp", "golden/greeting"};

    // The tests themselves may be run to rewrite golden files.
    Golden() { unsetenv("UPDATE_GOLDEN"); }
    ~Golden() override { unsetenv("UPDATE_GOLDEN"); }

    std::string failureOf(const ScreenImage& image) {
        return failure_of([&] { EXPECT_PRED_FORMAT2(screen_matches_golden, image, file); });
    }
};

TEST_F(Golden, a_file_that_is_not_there_fails_and_shows_the_screen) {
    const std::string failure = failureOf(greeting("hello"));
    EXPECT_NE(failure.find("there is no " + dir.path() + "/golden/greeting.txt"), std::string::npos)
        << failure;
    EXPECT_NE(failure.find(to_text(greeting("hello"))), std::string::npos) << failure;
    EXPECT_FALSE(exists(file.path()));
}

TEST_F(Golden, is_written_when_told_so_in_a_run_that_fails_once_and_compared_after_that) {
    setenv("UPDATE_GOLDEN", "1", 1);
    EXPECT_NE(failureOf(greeting("hello")).find("written anew"), std::string::npos);
    EXPECT_EQ(read_file(file.path()), to_text(greeting("hello")));
    EXPECT_EQ(failureOf(greeting("hello")), "");
    unsetenv("UPDATE_GOLDEN");
    EXPECT_EQ(failureOf(greeting("hello")), "");
    const std::string failure = failureOf(greeting("help"));
    EXPECT_NE(failure.find("! hello     |"), std::string::npos) << failure;
    EXPECT_NE(failure.find("   help      |"), std::string::npos) << failure;
    EXPECT_EQ(read_file(file.path()), to_text(greeting("hello")));
}

TEST(GoldenOfThisTest, is_found_beside_this_source_and_a_program_comes_to_look_like_it) {
    EXPECT_SCREEN(greeting("hello"), "golden/greeting");
    ProgramSetup setup{{"sh", "-c", R"(printf '\33[1;37;44m%s\33[m\33[H' hello; exec sleep 1000)"}};
    setup.rows = 2;
    setup.cols = 10;
    TerminalProgram program(setup);
    EXPECT_SCREEN(program, "golden/greeting");
}

}  // namespace
