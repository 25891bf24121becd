// A port that some program has already, on the screens of all five listeners.

#include <gtest/gtest.h>

#include "tests/e2e/frame.h"
#include "tests/e2e/stop_params.h"
#include "tests/e2e/wizard_run.h"
#include "tests/support/golden.h"
#include "tests/support/local_port.h"
#include "tests/support/wait_until.h"

namespace {

constexpr int loopback_row = 1;
constexpr int ethernet_row = 2;

std::string warning(const std::string& port, const std::string& address) {
    return "Warning! There is already an application that binds the " + port +
           " port on the selected interface " + address +
           ". Please stop that application and remove it from the automatic startup daemons at "
           "boot. More information about stopping common applications can be found in the "
           "/opt/teluma/share/doc/REMOVE-OTHERS.txt document. Back Retry";
}

class TakenPort : public AtScreen {
  protected:
    TakenPort() { program.open(); }

    // Tries the screen's port at the interface in a row of the list.
    void pressOk(int row = 0) {
        wizard.answerListener(GetParam(), {row});
        waitForWarning();
    }

    void waitForWarning() {
        wizard.waitForText("Warning!");
        wizard.waitForKey();
    }

    static std::string port() { return facts_of(GetParam()).port; }

    LocalPort program{std::stoi(port())};
};

INSTANTIATE_TEST_SUITE_P(Listeners, TakenPort, testing::ValuesIn(listener_stops()), stop_name);

TEST_P(TakenPort, is_warned_of_and_a_retry_goes_on_once_it_was_given_free) {
    pressOk();
    EXPECT_EQ(words_in_frame(wizard.image()), warning(port(), "0.0.0.0"));
    program.close();
    wizard.press(Key::enter);
    wizard.waitForScreen(nextStop());
}

TEST_P(TakenPort, is_warned_of_again_as_often_as_it_is_retried_in_vain) {
    pressOk();
    int connections = 0;
    for (int retries = 1; retries <= 3; ++retries) {
        wizard.press(retries % 2 == 1 ? Key::enter : Key::space);
        wait_until([&] { return (connections += program.takeAll()) == 1 + retries; },
                   "the port was retried");
        waitForWarning();
        EXPECT_EQ(words_in_frame(wizard.image()), warning(port(), "0.0.0.0"));
    }
    program.close();
    wizard.press(Key::enter);
    wizard.waitForScreen(nextStop());
}

TEST_P(TakenPort, can_be_replaced_by_another_one_after_going_back_to_it) {
    pressOk();
    wizard.press(Key::tab);
    wizard.press(Key::enter);
    wizard.waitForScreen(GetParam());
    const Position corner = wizard.waitForText("│$ all  : 0.0.0.0");
    const int behind_port = 24 + static_cast<int>(port().size());
    wizard.waitCursorAt(corner.row, corner.col - 1 + behind_port);
    wizard.retype(5, "2112");
    wizard.press(Key::enter);
    wizard.press(Key::enter);
    wizard.waitForScreen(nextStop());
}

TEST_P(TakenPort, of_the_loopback_interface_is_not_asked_about_once_a_retry_has_found_it_free) {
    pressOk(loopback_row);
    EXPECT_EQ(words_in_frame(wizard.image()), warning(port(), "127.0.0.1"));
    program.close();
    wizard.press(Key::enter);
    wizard.waitForScreen(nextStop());
    EXPECT_EQ(wizard.output().find("WARNING!"), std::string::npos);
}

class PortWarning : public testing::Test {
  protected:
    PortWarning() { wizard.walk(Stop::password, Stop::webadmin); }

    WizardRun wizard;
};

TEST_F(PortWarning, looks_like_this_and_has_the_focus_on_retry_until_tab_moves_it) {
    LocalPort program(9000);
    program.open();
    wizard.answerListener(Stop::webadmin, {});
    EXPECT_SCREEN(wizard, "golden/port_warning");
    wizard.press(Key::tab);
    EXPECT_SCREEN(wizard, "golden/port_warning_back");
    wizard.press(Key::tab);
    EXPECT_SCREEN(wizard, "golden/port_warning");
}

TEST_F(PortWarning, names_the_interface_on_which_the_port_is_taken) {
    LocalPort program(9000);
    program.open("192.168.7.2");
    wizard.answerListener(Stop::webadmin, {ethernet_row});
    wizard.waitForText("Warning!");
    wizard.waitForKey();
    EXPECT_EQ(words_in_frame(wizard.image()), warning("9000", "192.168.7.2"));
}

TEST_F(PortWarning, does_not_come_for_a_port_that_is_taken_on_another_interface) {
    LocalPort program(9000);
    program.open("192.168.7.2");
    wizard.answerListener(Stop::webadmin, {ethernet_row + 1});
    wizard.waitForScreen(Stop::smtp);
}

}  // namespace
