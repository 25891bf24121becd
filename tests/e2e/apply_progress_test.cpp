// The box that lists what is done while the answers are applied, in terminals of several sizes and
// when they are resized.

#include <gtest/gtest.h>

#include "tests/e2e/apply_screen.h"
#include "tests/e2e/apply_test.h"
#include "tests/e2e/apply_waits.h"
#include "tests/e2e/endings.h"
#include "tests/support/expect_screen.h"
#include "tests/support/files.h"
#include "tests/support/golden.h"

namespace {

// The same screen in a larger terminal: the frame in the middle, the lines above and below longer.
ScreenImage enlarged(const ScreenImage& screen, int rows, int cols) {
    const Frame frame = frame_on(screen);
    const int down = (rows - screen.rows()) / 2;
    const int right = (cols - screen.cols()) / 2;
    ScreenImage larger(rows, cols);
    for (int row = 0; row < rows; ++row) {
        const int from = row < rows - 2 ? std::min(row, 2) : row - rows + screen.rows();
        for (int col = 0; col < cols; ++col)
            larger.cell(row, col) = screen.cell(from, std::min(col, screen.cols() - 1));
    }
    for (int row = frame.at.row; row < frame.at.row + frame.image.rows(); ++row) {
        for (int col = frame.at.col; col < frame.at.col + frame.image.cols(); ++col)
            larger.cell(row + down, col + right) = screen.cell(row, col);
    }
    const Cursor& cursor = screen.cursor();
    larger.setCursor({{cursor.position.row + down, cursor.position.col + right}, cursor.visible});
    return larger;
}

class ApplyProgress : public ApplyTest {
  protected:
    /// Resizes from the usual size through the smallest and a large one and back.
    void expectEverySize(const std::string& usual, const std::string& smallest) {
        EXPECT_SCREEN(wizard, usual);
        wizard.waitForKey();
        const ScreenImage large = enlarged(wizard.image(), 60, 200);
        wizard.resize(20, 72);
        EXPECT_SCREEN(wizard, smallest);
        wizard.resize(60, 200);
        wizard.waitForKey();
        EXPECT_SAME_LOOK(large, wizard.image());
        wizard.resize(24, 80);
        EXPECT_SCREEN(wizard, usual);
        wizard.waitForKey();
    }
};

TEST_F(ApplyProgress, looks_like_this_in_every_size_while_a_step_runs) {
    server.faults("\"create domain\" 1 silent\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("creating domain");
    expectEverySize("golden/apply/running_80x24", "golden/apply/running_72x20");
    wizard.resize(24, 71);
    EXPECT_TRUE(ends_with(
        wizard, exited(0),
        "Please enlarge your window so it will have at least 72 columns and 20 lines!\n"));
    EXPECT_TRUE(server.isRunning());
}

TEST_F(ApplyProgress, looks_like_this_in_every_size_when_all_is_done) {
    runToOk();
    expectEverySize("../apply/golden/everything_done", "golden/apply/done_72x20");
    EXPECT_EQ(wizard.finish(), exited(0));
}

class ApplyResize : public testing::TestWithParam<ApplyWait> {};

INSTANTIATE_TEST_SUITE_P(At, ApplyResize,
                         testing::Values(ApplyWait::old_pid_file, ApplyWait::password_command,
                                         ApplyWait::before_connecting, ApplyWait::connection),
                         apply_wait_name);

TEST_P(ApplyResize, is_drawn_in_the_wait) {
    ApplyStage stage(GetParam());
    WizardRun wizard;
    stage.open(wizard);
    const ScreenImage usual = wizard.image();
    wizard.resize(60, 200);
    wizard.waitForKey();
    EXPECT_SAME_LOOK(enlarged(usual, 60, 200), wizard.image());
    wizard.resize(24, 80);
    wizard.waitForKey();
    EXPECT_SAME_LOOK(usual, wizard.image());
}

}  // namespace
