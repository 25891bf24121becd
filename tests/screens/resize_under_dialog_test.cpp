// A screen that comes back after the terminal was resized under a dialog.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/screens/domain_rig.h"
#include "tests/screens/listener_rig.h"
#include "tests/screens/moved_picture.h"
#include "tests/support/case_name.h"
#include "tests/support/expect_screen.h"
#include "tests/support/local_port.h"
#include "wizard/base/screen_state.h"

namespace {

constexpr int new_rows = 40;
constexpr int new_cols = 121;

/// Where a frame of that size stands on the usual terminal and on the resized one.
struct Frame {
    int rows;
    int cols;

    Position before() const { return {(24 - rows) / 2, (80 - cols) / 2}; }
    Position after() const { return {(new_rows - rows) / 2, (new_cols - cols) / 2}; }
};

/// Opens a dialog by `open` and closes it by `close`: first without, then with a resize in between.
/// Expects that the screen that comes back looks the same but for its place. `make` makes a rig.
template <class MakeRig>
void expect_screen_in_its_place(const MakeRig& make, const Frame& frame,
                                const std::vector<Step>& open, const std::vector<Step>& close) {
    const ScreenImage ground = background(new_rows, new_cols);
    const ScreenImage usual = [&] {
        auto wizard = make();
        wizard->play(open + close);
        return wizard->image();
    }();
    auto wizard = make();
    wizard->play(open + std::vector<Step>{[&] { wizard->resize(new_rows, new_cols); }} + close);
    const Position from = frame.before();
    const Position to = frame.after();
    const ScreenImage expected =
        put_on(ground, usual.region(from.row, from.col, frame.rows, frame.cols), to.row, to.col);
    EXPECT_SAME_LOOK(expected, wizard->image());
    EXPECT_SAME_LOOK(expected, wizard->terminalImage());
}

TEST(ResizeUnderDialog, the_password_screen_comes_back_in_its_new_place) {
    expect_screen_in_its_place([] { return std::make_unique<WizardRig>(state_password); }, {13, 45},
                               {"one\ttwo\t", Key::enter}, {Key::enter});
}

TEST(ResizeUnderDialog, the_domain_screen_comes_back_in_its_new_place) {
    expect_screen_in_its_place([] { return std::make_unique<DomainRig>(); }, {15, 60},
                               {backspaces(11), "\t\t\t", Key::enter}, {Key::enter});
}

class ListenerResizeUnderDialog : public testing::TestWithParam<ListenerFacts> {
  protected:
    void expectInItsPlace(const std::vector<Step>& open, const std::vector<Step>& close) {
        const auto make = [] { return std::make_unique<ListenerRig>(GetParam()); };
        expect_screen_in_its_place(make, {12, 29}, open, close);
    }
};

TEST_P(ListenerResizeUnderDialog, comes_back_in_its_new_place_after_an_error) {
    expectInItsPlace(answer_listener(row_eth0, "x"), {Key::enter});
}

TEST_P(ListenerResizeUnderDialog, comes_back_in_its_new_place_after_the_loopback_question) {
    const LocalPort port;
    expectInItsPlace(answer_listener(row_lo, std::to_string(port.number())), {Key::enter});
}

TEST_P(ListenerResizeUnderDialog, comes_back_in_its_new_place_after_the_warning_of_a_taken_port) {
    LocalPort port;
    port.open();
    expectInItsPlace(answer_listener(row_eth0, std::to_string(port.number())), {"\t", Key::enter});
}

INSTANTIATE_TEST_SUITE_P(Screens, ListenerResizeUnderDialog, testing::ValuesIn(all_listeners()),
                         CaseName());

}  // namespace
