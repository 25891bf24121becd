// The examples of this folder's README compile, and the first one holds.

#include <gtest/gtest.h>

#include "tests/support/curses_terminal.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "tests/support/terminal_program.h"
#include "ui/button.h"

namespace {

#include "readme_examples.h"

TEST(Readme, shows_how_a_widget_is_tested) { example_1(); }

}  // namespace
