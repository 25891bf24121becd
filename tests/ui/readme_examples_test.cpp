#include <gtest/gtest.h>

#include "tests/support/curses_terminal.h"
#include "tests/support/exit_status.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "tests/support/terminal_program.h"
#include "ui/button.h"

// The examples of tests/support/README.md, as functions.
#include "readme_examples.h"

namespace {

TEST(SupportReadme, its_example_of_a_widget_is_true) {
    readme_example_1();
}

// Nothing more: there is no such program here.
TEST(SupportReadme, its_example_of_a_program_compiles) {
    EXPECT_NE(&readme_example_2, nullptr);
}

}  // namespace
