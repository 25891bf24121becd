// A terminal that is resized, or that somebody else has written on: what stands there looks as in a
// terminal that always had the size. One that is too small ends the wizard with status 0.

#include <fcntl.h>
#include <unistd.h>

#include <map>

#include "tests/e2e/apply_test.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/places.h"
#include "tests/support/descriptor.h"
#include "tests/support/expect_screen.h"
#include "tests/support/frame.h"
#include "tests/support/golden.h"

namespace {

struct Size {
    int rows;
    int cols;
};

// The smallest terminal there may be, the usual one and a large one.
constexpr Size terminal_sizes[] = {{20, 72}, {24, 80}, {60, 200}};

// Resizes from the usual size that lead from each of these sizes to each other, in both directions,
// and back to the usual one.
constexpr Size resize_round[] = {{20, 72}, {60, 200}, {20, 72}, {24, 80}, {60, 200}, {24, 80}};

void strike(WizardRun& wizard, Key key) {
    wizard.press(key);
    wizard.waitForKey();
}

class ResizedPlace : public testing::TestWithParam<Place> {};

INSTANTIATE_TEST_SUITE_P(At, ResizedPlace, testing::ValuesIn(places_up_to(Place::pending)),
                         place_name);

TEST_P(ResizedPlace, looks_as_in_a_terminal_that_always_had_the_size_and_so_does_what_follows) {
    Stage stage(GetParam());
    std::map<int, WizardRun> fresh;  // by columns
    WizardRun resized;
    stage.open(resized);
    for (const Size& size : terminal_sizes)
        stage.open(fresh.try_emplace(size.cols, size.rows, size.cols).first->second);
    for (const Key key : {Key::tab, Key::enter}) {
        for (const Size& size : resize_round) {
            resized.resize(size.rows, size.cols);
            resized.waitForKey();
            EXPECT_SAME_LOOK(fresh.at(size.cols).image(), resized.image());
        }
        // A pending box reads no key; "Yes" would have a port checked, for a moment.
        const bool would_check = GetParam() == Place::question && key == Key::tab;
        if (GetParam() == Place::pending || would_check) continue;
        for (auto& [cols, wizard] : fresh) strike(wizard, key);
        strike(resized, key);
    }
    EXPECT_SAME_LOOK(fresh.at(80).image(), resized.image());
}

using ShrunkPlace = WizardAt<WizardRun>;

INSTANTIATE_TEST_SUITE_P(At, ShrunkPlace, testing::ValuesIn(places_up_to(Place::pending)),
                         place_name);

TEST_P(ShrunkPlace, to_20_lines_and_72_columns_goes_on_and_to_less_is_refused) {
    Size size = {19, 72};
    if (GetParam() == Place::screen) size = {20, 71};
    if (GetParam() == Place::message) size = {1, 72};
    wizard.resize(20, 72);
    wizard.waitForKey();
    wizard.resize(size.rows, size.cols);
    EXPECT_TRUE(is_refused_as_too_small(wizard));
}

// While the answers are applied.

class ApplyProgress : public ApplyTest {
  protected:
    void expectSizes(const std::string& usual, const std::string& smallest) {
        EXPECT_SCREEN(wizard, usual);
        wizard.resize(20, 72);
        EXPECT_SCREEN(wizard, smallest);
        wizard.resize(24, 80);
        EXPECT_SCREEN(wizard, usual);
        wizard.waitForKey();
    }
};

TEST_F(ApplyProgress, looks_like_this_in_every_size_while_a_step_runs) {
    server.faults("\"create domain\" 1 silent\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("creating domain");
    expectSizes("golden/apply/running_80x24", "golden/apply/running_72x20");
    wizard.resize(24, 71);
    EXPECT_TRUE(is_refused_as_too_small(wizard));
    EXPECT_TRUE(server.isRunning());
}

TEST_F(ApplyProgress, looks_like_this_in_every_size_when_all_is_done) {
    wizard.walkToTheEnd(answers);
    wizard.waitForText(" OK ");
    expectSizes("../apply/golden/everything_done", "golden/apply/done_72x20");
    EXPECT_EQ(wizard.finish(), exited(0));
}

using ApplyResize = WizardAt<WizardRun>;

INSTANTIATE_TEST_SUITE_P(At, ApplyResize,
                         testing::Values(Place::old_pid_file, Place::password_command,
                                         Place::before_connecting, Place::connection),
                         place_name);

TEST_P(ApplyResize, is_drawn_in_the_wait) {
    const ScreenImage usual = wizard.image();
    wizard.resize(60, 200);
    wizard.waitForKey();
    EXPECT_SAME_LOOK(frame_on(usual).image, frame_on(wizard.image()).image);
    EXPECT_EQ(frame_on(wizard.image()).at.row, frame_on(usual).at.row + (60 - 24) / 2);
    EXPECT_EQ(frame_on(wizard.image()).at.col, frame_on(usual).at.col + (200 - 80) / 2);
    wizard.resize(24, 80);
    wizard.waitForKey();
    EXPECT_SAME_LOOK(usual, wizard.image());
}

// Somebody else has written on the terminal: Ctrl-L draws everything anew.

// As wall(1) does, or the kernel on its console; on another screen and with the cursor shown.
void write_on_terminal_of(WizardRun& wizard) {
    const std::string path = "/proc/" + std::to_string(wizard.pid()) + "/fd/1";
    const Descriptor terminal(checked(open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC), "open"));
    const std::string message = "\x1b[?1049l\x1b[?25h\x1b[m\r\nBroadcast message from root\r\n";
    checked(static_cast<int>(write(terminal.get(), message.data(), message.size())), "write");
    wizard.waitForText("Broadcast message");
}

void expect_drawn_anew(WizardRun& wizard) {
    const ScreenImage drawn = wizard.image();
    write_on_terminal_of(wizard);
    wizard.type("\f");
    wizard.waitForKey();
    EXPECT_SAME_LOOK(drawn, wizard.image());
    EXPECT_TRUE(wizard.alternateScreen());
}

TEST(RedrawnScreen, is_what_it_was_whatever_has_the_focus) {
    WizardRun wizard;
    for (const Stop stop : every_stop()) {
        wizard.waitForScreen(stop);
        for (int control = 0; control < 3; ++control) {
            expect_drawn_anew(wizard);
            strike(wizard, Key::tab);
        }
        wizard.answer(stop, {});
    }
}

using RedrawnDialog = WizardAt<WizardRun>;

INSTANTIATE_TEST_SUITE_P(Dialogs, RedrawnDialog,
                         testing::Values(Place::message, Place::question, Place::retry_back),
                         place_name);

// What presses a button by itself presses none in a sequence.
TEST_P(RedrawnDialog, is_what_it_was_and_stays_open_at_sequences_that_nobody_knows) {
    const ScreenImage drawn = wizard.image();
    expect_drawn_anew(wizard);
    wizard.type("\x1b[2 q\x1b[1;5~\x1b[[A");
    wizard.waitForKey();
    EXPECT_SAME_LOOK(drawn, wizard.image());
}

}  // namespace
