// Ports that only a network of the test's own can be sure to have: the defaults of the listeners.

#include <gtest/gtest.h>

#include "tests/screens/screen_facts.h"
#include "tests/support/golden.h"
#include "tests/support/local_port.h"

namespace {

TEST(DefaultPort, of_each_listener_that_is_taken_is_warned_of) {
    for (const ListenerFacts& listener : all_listeners()) {
        LocalPort port(listener.defaultPort());
        port.open();
        WizardRig wizard(listener.state);
        wizard.play({"\t\t", Key::enter});
        EXPECT_TRUE(wizard.image().shows("Warning!")) << listener.name;
        if (listener.isWebadmin()) {
            EXPECT_SCREEN(wizard.image(), "golden/port_in_use_of_WebAdmin");
        }
    }
}

TEST(DefaultPort, that_is_taken_is_warned_of_on_the_smallest_terminal) {
    LocalPort port(9000);
    port.open();
    WizardRig wizard(state_webadmin, Size{20, 72});
    wizard.play({"\t\t", Key::enter, Key::tab});
    EXPECT_SCREEN(wizard.image(), "golden/port_in_use_on_the_smallest_terminal");
}

}  // namespace
