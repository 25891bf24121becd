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
    /// Resizes through all sizes, each of which has a golden file, "SCREEN_COLSxROWS", but the
    /// largest, which looks like the usual one.
    void expectEverySize(const std::string& screen) {
        EXPECT_SCREEN(wizard, usual(screen));
        wizard.waitForKey();
        const ScreenImage large = enlarged(wizard.image(), 60, 200);
        wizard.resize(20, 72);
        EXPECT_SCREEN(wizard, "golden/apply/" + screen + "_72x20");
        wizard.resize(60, 200);
        wizard.waitForKey();
        EXPECT_SAME_LOOK(large, wizard.image());
        wizard.resize(24, 80);
        EXPECT_SCREEN(wizard, usual(screen));
        wizard.waitForKey();
    }

  private:
    static std::string usual(const std::string& screen) {
        return screen == "done" ? "../apply/golden/everything_done"
                                : "golden/apply/" + screen + "_80x24";
    }
};

TEST_F(ApplyProgress, looks_like_this_in_every_size_while_a_step_runs) {
    server.faults("\"create domain\" 1 silent\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("creating domain");
    expectEverySize("running");
    wizard.resize(24, 71);
    EXPECT_TRUE(ends_with(
        wizard, exited(0),
        "Please enlarge your window so it will have at least 72 columns and 20 lines!\n"));
    EXPECT_TRUE(server.isRunning());
}

TEST_F(ApplyProgress, looks_like_this_in_every_size_when_all_is_done) {
    wizard.walkToTheEnd(answers);
    wizard.waitForText(" OK ");
    expectEverySize("done");
    EXPECT_EQ(wizard.finish(), exited(0));
}

TEST_F(ApplyProgress, after_a_resize_under_an_error_stands_where_it_should_in_the_next_run) {
    server.faults("\"create domain\" 1 refuse\n=\"add alias root\" 1 silent\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForDialog("Error!");
    wizard.resize(60, 200);
    wizard.waitForKey();
    wizard.dismissError("already exist!");
    wizard.walkToTheEnd(answers, Stop::domain);
    wait_for_progress(wizard, {done("setting admin password"), done("connecting to CLI"),
                               done("creating domain localdomain"), running("adding aliases")});
    EXPECT_EQ(frame_on(wizard.image()).at, (Position{21, 68}));
}

TEST_F(ApplyProgress, does_no_harm_to_a_run_when_it_is_resized_again_and_again) {
    server.faults("\"\" * late 0.01\n");
    wizard.walkToTheEnd(answers);
    for (int i = 0; !wizard.image().shows(" OK "); ++i) {
        wizard.resize(20 + i % 2 * 40, 72 + i % 2 * 128);
        wizard.waitForText("Operations pending");
        wizard.waitForKey();
    }
    wizard.resize(24, 80);
    EXPECT_SCREEN(wizard, "../apply/golden/everything_done");
    wizard.waitForKey();
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
