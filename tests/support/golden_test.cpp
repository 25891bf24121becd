#include "tests/support/golden.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/failure_of.h"
#include "tests/support/files.h"
#include "tests/support/screen_text.h"
#include "tests/support/temp_dir.h"
#include "tests/support/terminal_program.h"

namespace {

ScreenImage greeting(const std::string& name) {
    ScreenImage image(2, 10);
    for (size_t i = 0; i < name.size(); ++i)
        image.cell(0, static_cast<int>(i)) = {name.substr(i, 1), 7, 4, true};
    return image;
}

std::string failure_of_comparison(const ScreenImage& image, const GoldenFile& file) {
    return failure_of([&] { EXPECT_PRED_FORMAT2(screen_matches_golden, image, file); });
}

class Golden : public testing::Test {
  protected:
    TempDir dir;
    GoldenFile file{dir / "some_test.cpp", "golden/greeting"};

    // Where the tests themselves are run to rewrite golden files.
    Golden() { unsetenv("UPDATE_GOLDEN"); }
    ~Golden() override { unsetenv("UPDATE_GOLDEN"); }

    void writeGreeting(const std::string& name) {
        setenv("UPDATE_GOLDEN", "1", 1);
        failure_of_comparison(greeting(name), file);
        unsetenv("UPDATE_GOLDEN");
    }
};

TEST_F(Golden, the_file_stands_beside_the_source_of_the_test) {
    EXPECT_EQ(file.path(), dir / "golden/greeting.txt");
}

TEST_F(Golden, a_file_that_is_not_there_fails_and_shows_the_screen) {
    const std::string failure = failure_of_comparison(greeting("hello"), file);
    EXPECT_NE(failure.find("there is no " + file.path()), std::string::npos) << failure;
    EXPECT_NE(failure.find(to_text(greeting("hello"))), std::string::npos) << failure;
    EXPECT_FALSE(exists(file.path()));
}

TEST_F(Golden, update_golden_writes_the_file_but_does_not_let_the_test_pass) {
    setenv("UPDATE_GOLDEN", "1", 1);
    const std::string failure = failure_of_comparison(greeting("hello"), file);
    EXPECT_NE(failure.find("written anew"), std::string::npos) << failure;
    EXPECT_EQ(read_file(file.path()), to_text(greeting("hello")));
}

TEST_F(Golden, a_written_file_matches_its_screen_also_while_updating) {
    writeGreeting("hello");
    EXPECT_EQ(failure_of_comparison(greeting("hello"), file), "");
    setenv("UPDATE_GOLDEN", "1", 1);
    EXPECT_EQ(failure_of_comparison(greeting("hello"), file), "");
}

TEST_F(Golden, a_different_screen_fails_with_both_side_by_side) {
    writeGreeting("hello");
    const std::string failure = failure_of_comparison(greeting("help"), file);
    EXPECT_NE(failure.find("! hello     |"), std::string::npos) << failure;
    EXPECT_NE(failure.find("   help      |"), std::string::npos) << failure;
    EXPECT_EQ(read_file(file.path()), to_text(greeting("hello")));
}

TEST(GoldenOfThisTest, is_found_by_the_name_beside_this_source) {
    EXPECT_SCREEN(greeting("hello"), "golden/greeting");
}

TEST(GoldenOfAProgram, is_waited_for) {
    ProgramSetup setup{{SAMPLE_PROGRAM}};
    setup.rows = 9;
    setup.cols = 30;
    TerminalProgram program(setup);
    EXPECT_SCREEN(program, "golden/sample_program");
    program.press(Key::down);
    EXPECT_SCREEN(program, "golden/sample_program_key_down");
}

}  // namespace
