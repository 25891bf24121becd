// What the listener screens take and refuse when "OK" is pressed, as long as no other program uses
// the port.

#include <gtest/gtest.h>

#include <string>

#include "tests/screens/dialog_region.h"
#include "tests/screens/listener_rig.h"
#include "tests/support/case_name.h"
#include "tests/support/expect_screen.h"
#include "tests/support/local_port.h"
#include "wizard/base/screen_state.h"

namespace {

class ListenerAnswer : public testing::TestWithParam<ListenerFacts> {
  protected:
    const ListenerFacts& listener = GetParam();
    ListenerRig wizard{listener};
    LocalPort free_port;
    std::string number = std::to_string(free_port.number());
};

TEST_P(ListenerAnswer, with_a_free_port_is_stored_and_leads_to_the_next_screen) {
    wizard.play(answer_listener(row_eth0, number));
    EXPECT_EQ(wizard.chosenInterface(), row_eth0);
    EXPECT_EQ(wizard.chosenPort(), free_port.number());
    EXPECT_EQ(screen_state, listener.next_state);
    EXPECT_EQ(screen_focus(state_smtp), 0);
    EXPECT_FALSE(wizard.image().shows(listener.title));
}

TEST_P(ListenerAnswer, is_taken_by_the_space_key_too) {
    wizard.play({"\t\x7f\x7f\x7f\x7f\x7f", number, "\t", Key::space});
    EXPECT_EQ(screen_state, listener.next_state);
    EXPECT_EQ(wizard.chosenPort(), free_port.number());
}

TEST_P(ListenerAnswer, is_checked_under_a_pending_box_with_the_screen_hidden) {
    wizard.waits.inSleep = [&] {
        EXPECT_EQ(screen_state, state_pending);
        EXPECT_PICTURE(pending_region(wizard.image(), 44), R"(
┌──────────────────────────────────────────────┐
│              Operation pending!              │
├──────────────────────────────────────────────┤
│ Please wait until the port is being checked! │
│                                              │
│                                              │
└──────────────────────────────────────────────┘
)");
        EXPECT_FALSE(wizard.image().shows(listener.title));
        EXPECT_FALSE(wizard.image().shows("Interface:"));
    };
    wizard.play(answer_listener(row_eth0, number));
    EXPECT_EQ(wizard.waits.sleeps, std::vector<int>{0});
    EXPECT_FALSE(wizard.image().shows("Operation pending!"));
}

TEST_P(ListenerAnswer, that_was_refused_can_be_corrected) {
    wizard.play(answer_listener(row_eth0, "70000") +
                std::vector<Step>{Key::enter, "\x7f\x7f\x7f\x7f\x7f" + number + "\t", Key::enter});
    EXPECT_EQ(screen_state, listener.next_state);
    EXPECT_EQ(wizard.chosenInterface(), row_eth0);
    EXPECT_EQ(wizard.chosenPort(), free_port.number());
}

TEST_P(ListenerAnswer, without_digits_leaves_the_port_in_the_settings) {
    wizard.setChosenPort(77);
    wizard.play(answer_listener(row_eth0, "8x") + std::vector<Step>{Key::enter});
    EXPECT_EQ(wizard.chosenPort(), 77);
}

INSTANTIATE_TEST_SUITE_P(Screens, ListenerAnswer, testing::ValuesIn(all_listeners()), CaseName());

class RefusedPort : public testing::TestWithParam<ListenerFacts> {
  protected:
    const ListenerFacts& listener = GetParam();
};

TEST_P(RefusedPort, sends_the_focus_to_the_port_after_an_error) {
    for (const char* text : {"", "8x", "x8", "-1", "+25", "8 0", "65536", "99999"}) {
        SCOPED_TRACE(text);
        ListenerRig wizard(listener);
        wizard.play(answer_listener(row_eth0, text) +
                    std::vector<Step>{
                        [&] {
                            EXPECT_EQ(screen_state, state_message);
                            expect_error_box(wizard.image(),
                                             "The port must be a valid number in [0-65535] range!");
                            EXPECT_FALSE(wizard.image().shows(listener.title));
                        },
                        Key::enter});
        EXPECT_EQ(screen_state, listener.state);
        EXPECT_EQ(screen_focus(listener.state), 1);
        EXPECT_TRUE(wizard.cursorInPort(row_eth0, static_cast<int>(std::string(text).size())));
        // "OK" has the look of a button without the focus.
        EXPECT_COLOURS(wizard.image().region(15, 25 + 21, 1, 6), "\nrrrrrr\n");
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, RefusedPort, testing::ValuesIn(all_listeners()), CaseName());

class ServiceAnswer : public ListenerAnswer {};

TEST_P(ServiceAnswer, with_too_high_a_port_stores_the_row_but_not_the_port) {
    wizard.play(answer_listener(row_eth0, "65536"));
    EXPECT_EQ(wizard.chosenInterface(), row_eth0);
    EXPECT_EQ(wizard.chosenPort(), listener.default_port);
}

TEST_P(ServiceAnswer, leaves_the_focus_of_the_services_screen_alone) {
    screen_focus(state_services) = 2;
    wizard.play(answer_listener(row_eth0, number));
    EXPECT_EQ(screen_focus(state_services), 2);
}

INSTANTIATE_TEST_SUITE_P(Screens, ServiceAnswer, testing::ValuesIn(service_facts()), CaseName());

TEST(WebAdminAnswer, with_too_high_a_port_stores_it_all_the_same) {
    ListenerRig wizard(webadmin_facts());
    wizard.play(answer_listener(row_eth0, "65536"));
    EXPECT_EQ(wizard.chosenPort(), 65536);
}

TEST(WebAdminAnswer, sends_the_focus_of_the_SMTP_screen_to_its_list) {
    ListenerRig wizard(webadmin_facts());
    const LocalPort free_port;
    screen_focus(state_smtp) = 3;
    wizard.play(answer_listener(row_eth0, std::to_string(free_port.number())));
    EXPECT_EQ(screen_state, state_smtp);
    EXPECT_EQ(screen_focus(state_smtp), 0);
}

}  // namespace
