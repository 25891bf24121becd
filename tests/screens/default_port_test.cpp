// Ports that only a network of the test's own can be sure to have: the defaults of the listeners
// and the ends of the range.

#include <gtest/gtest.h>

#include <string>

#include "tests/screens/listener_rig.h"
#include "tests/support/golden.h"
#include "tests/support/local_port.h"
#include "wizard/base/screen_state.h"

namespace {

TEST(DefaultPort, of_each_listener_is_stored_when_OK_is_pressed_at_once) {
    for (const ListenerFacts& listener : all_listeners()) {
        SCOPED_TRACE(listener.name);
        ListenerRig wizard(listener);
        wizard.setChosenPort(0);
        wizard.play({"\t\t", Key::enter});
        EXPECT_EQ(screen_state, listener.next_state);
        EXPECT_EQ(wizard.chosenInterface(), 0);
        EXPECT_EQ(wizard.chosenPort(), listener.default_port);
    }
}

TEST(PortRange, has_0_and_65535_in_it) {
    for (const ListenerFacts& listener : all_listeners()) {
        for (const int port : {0, 65535}) {
            SCOPED_TRACE(listener.name + " " + std::to_string(port));
            ListenerRig wizard(listener);
            wizard.play(answer_listener(row_eth0, std::to_string(port)));
            EXPECT_EQ(screen_state, listener.next_state);
            EXPECT_EQ(wizard.chosenPort(), port);
        }
    }
}

TEST(PortRange, counts_a_port_with_leading_zeros) {
    ListenerRig wizard(webadmin_facts());
    wizard.play(answer_listener(row_eth0, "00080"));
    EXPECT_EQ(screen_state, state_smtp);
    EXPECT_EQ(wizard.chosenPort(), 80);
}

TEST(DefaultPort, that_is_taken_is_warned_of) {
    for (const ListenerFacts& listener : all_listeners()) {
        LocalPort port(listener.default_port);
        port.open();
        ListenerRig wizard(listener);
        wizard.play({"\t\t", Key::enter});
        EXPECT_SCREEN(wizard.image(), "golden/port_in_use_of_" + listener.name);
    }
}

TEST(DefaultPort, that_is_taken_is_warned_of_on_the_smallest_terminal) {
    LocalPort port(9000);
    port.open();
    RigSetup setup;
    setup.rows = 20;
    setup.cols = 72;
    ListenerRig wizard(webadmin_facts(), setup);
    wizard.play({"\t\t", Key::enter, Key::tab});
    EXPECT_SCREEN(wizard.image(), "golden/port_in_use_on_the_smallest_terminal");
}

}  // namespace
