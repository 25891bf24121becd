// The keys of the listener screens, what they show and what they remember.

#include <gtest/gtest.h>

#include <string>

#include "screens/screen_table.h"
#include "tests/screens/listener_rig.h"
#include "tests/support/case_name.h"
#include "tests/support/expect_screen.h"
#include "tests/support/local_port.h"
#include "wizard/base/screen_state.h"

namespace {

class EachListener : public testing::TestWithParam<ListenerFacts> {
  protected:
    const ListenerFacts& listener = GetParam();
    const std::string default_port = std::to_string(listener.default_port);
};

TEST_P(EachListener, has_its_title_and_its_default_port_in_each_row) {
    ListenerRig wizard(listener);
    wizard.play({});
    EXPECT_TRUE(wizard.image().shows(listener.title));
    for (const int row : {row_all, row_lo, row_eth0})
        EXPECT_EQ(wizard.portShown(row), default_port);
}

TEST_P(EachListener, the_bar_moves_by_the_cursor_keys_and_stops_at_both_ends) {
    ListenerRig wizard(listener);
    wizard.play({Key::up, [&] { EXPECT_EQ(wizard.rowShown(row_all), "$ all  : 0.0.0.0"); },
                 Key::down, Key::down,
                 [&] { EXPECT_EQ(wizard.rowShown(row_eth0), "$ eth0 : 127.0.0.2"); }, Key::down,
                 [&] { EXPECT_EQ(wizard.rowShown(row_eth0), "$ eth0 : 127.0.0.2"); }, Key::up});
    EXPECT_EQ(wizard.rowShown(row_all), "  all  : 0.0.0.0");
    EXPECT_EQ(wizard.rowShown(row_lo), "$ lo   : 127.0.0.1");
    EXPECT_EQ(wizard.rowShown(row_eth0), "  eth0 : 127.0.0.2");
    EXPECT_EQ(screen_focus(listener.state), 0);
}

TEST_P(EachListener, keys_that_are_none_of_the_list_do_nothing_in_it) {
    ListenerRig wizard(listener);
    wizard.play({});
    const ScreenImage before = wizard.image();
    wizard.play({" x5", Key::left, Key::right, Key::backspace});
    EXPECT_EQ(screen_focus(listener.state), 0);
    EXPECT_SAME_LOOK(before, wizard.image());
}

TEST_P(EachListener, TAB_and_Enter_move_from_the_list_to_the_port_of_the_row_under_the_bar) {
    const int length = static_cast<int>(default_port.size());
    for (const Key key : {Key::tab, Key::enter}) {
        ListenerRig wizard(listener);
        wizard.play({Key::down, Key::down, key});
        EXPECT_EQ(screen_focus(listener.state), 1);
        EXPECT_TRUE(wizard.cursorInPort(row_eth0, length));
    }
}

TEST_P(EachListener, TAB_and_Enter_move_from_the_port_to_OK_and_hide_the_cursor) {
    for (const Key key : {Key::tab, Key::enter}) {
        ListenerRig wizard(listener);
        wizard.play({Key::tab, key});
        EXPECT_EQ(screen_focus(listener.state), 2);
        EXPECT_FALSE(wizard.image().cursor().visible);
    }
}

TEST_P(EachListener, keys_go_to_the_port_of_the_row_under_the_bar_alone) {
    ListenerRig wizard(listener);
    wizard.play({Key::down, Key::tab, Key::backspace, "7", "\t\t\t", Key::down, Key::tab,
                 "\x7f\x7f\x7f\x7f\x7f", "x"});
    EXPECT_TRUE(wizard.cursorInPort(row_eth0, 1));
    EXPECT_EQ(wizard.portShown(row_eth0), "x");
    EXPECT_EQ(wizard.portShown(row_lo), default_port.substr(0, default_port.size() - 1) + "7");
    EXPECT_EQ(wizard.portShown(row_all), default_port);
}

TEST_P(EachListener, a_port_has_five_characters_at_most) {
    ListenerRig wizard(listener);
    wizard.play({Key::tab, "\x7f\x7f\x7f\x7f\x7f", "123456"});
    EXPECT_EQ(wizard.portShown(row_all), "12345");
    EXPECT_TRUE(wizard.cursorInPort(row_all, 5));
}

TEST_P(EachListener, back_leads_to_the_screen_before_and_its_first_control) {
    for (const Key press : {Key::enter, Key::space}) {
        ListenerRig wizard(listener);
        screen_focus(listener.previous_state) = 0;
        if (listener.state == state_webadmin)
            screen_focus(state_aliases) = 2;
        wizard.play({"\t\t\t", press});
        EXPECT_EQ(screen_state, listener.previous_state);
        EXPECT_EQ(screen_focus(listener.previous_state), 0);
        EXPECT_FALSE(wizard.image().shows(listener.title));
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, EachListener, testing::ValuesIn(all_listeners()), CaseName());

class EachService : public EachListener {};

TEST_P(EachService, back_sends_the_focus_of_its_own_screen_to_the_list) {
    ListenerRig wizard(listener);
    wizard.play({"\t\t\t", Key::enter});
    EXPECT_EQ(screen_focus(state_smtp), 0);
}

TEST_P(EachService, the_row_under_the_bar_is_not_the_answer_before_OK) {
    ListenerRig wizard(listener);
    wizard.play({Key::down, Key::down, "\t\t\t", [&] { EXPECT_EQ(wizard.chosenInterface(), 0); },
                 Key::enter});
    EXPECT_EQ(wizard.chosenInterface(), 0);
    EXPECT_EQ(wizard.chosenPort(), listener.default_port);
}

TEST_P(EachService, a_visit_that_ended_with_back_keeps_the_typed_port_but_not_the_bar) {
    ListenerRig wizard(listener);
    wizard.play({Key::down, Key::tab, "\x7f\x7f\x7f\x7f\x7f", "77", "\t\t", Key::enter});
    screen_state = listener.state;
    wizard.play({});
    EXPECT_EQ(wizard.rowShown(row_all), "$ all  : 0.0.0.0");
    EXPECT_EQ(wizard.portShown(row_lo), "77");
}

INSTANTIATE_TEST_SUITE_P(Screens, EachService, testing::ValuesIn(service_facts()), CaseName());

/// Answers the screen of a listener with a port that nobody uses.
void accept(WizardRig& wizard, const ListenerFacts& listener, int row, const LocalPort& port) {
    screen_state = listener.state;
    wizard.play(answer_listener(row, std::to_string(port.number())));
}

TEST(ServiceScreen, each_service_remembers_its_own_row_and_ports) {
    ListenerRig wizard(service_facts().front());
    const LocalPort first;
    const LocalPort second;
    const ListenerFacts smtp = service_facts()[0];
    const ListenerFacts imap = service_facts()[2];
    accept(wizard, smtp, row_eth0, first);
    accept(wizard, imap, row_all, second);

    screen_state = smtp.state;
    wizard.play({});
    EXPECT_EQ(wizard.rowShown(row_eth0), "$ eth0 : 127.0.0.2");
    EXPECT_EQ(wizard.portShown(row_eth0), std::to_string(first.number()));
    EXPECT_EQ(wizard.portShown(row_all), "25");

    screen_state = imap.state;
    wizard.play({});
    EXPECT_EQ(wizard.rowShown(row_all), "$ all  : 0.0.0.0");
    EXPECT_EQ(wizard.portShown(row_all), std::to_string(second.number()));
    EXPECT_EQ(wizard.portShown(row_eth0), "143");

    screen_state = state_pop3;
    wizard.play({});
    EXPECT_EQ(wizard.rowShown(row_all), "$ all  : 0.0.0.0");
    EXPECT_EQ(wizard.portShown(row_all), "110");
}

TEST(WebAdminScreen, a_user_who_comes_back_finds_the_bar_and_the_port_as_they_were) {
    ListenerRig wizard(webadmin_facts());
    const LocalPort port;
    wizard.play(answer_listener(row_eth0, std::to_string(port.number())));
    ASSERT_EQ(screen_state, state_smtp);
    wizard.play({"\t\t\t", Key::enter});
    EXPECT_EQ(screen_state, state_webadmin);
    EXPECT_EQ(wizard.rowShown(row_eth0), "$ eth0 : 127.0.0.2");
    EXPECT_EQ(wizard.portShown(row_eth0), std::to_string(port.number()));
}

TEST(WebAdminScreen, the_row_under_the_bar_is_the_answer_at_once) {
    ListenerRig wizard(webadmin_facts());
    wizard.play({Key::down, [&] { EXPECT_EQ(wizard.chosenInterface(), 1); }, Key::down,
                 [&] { EXPECT_EQ(wizard.chosenInterface(), 2); }, Key::up,
                 [&] { EXPECT_EQ(wizard.chosenInterface(), 1); }, "\t\t\t", Key::enter});
    EXPECT_EQ(wizard.chosenInterface(), 1);
}

}  // namespace
