#include <gtest/gtest.h>
#include <panel.h>

#include "screens/screen.h"
#include "screens/screen_table.h"
#include "tests/wizard/screen_session.h"
#include "ui/main_window.h"
#include "ui/message_dialogs.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/screen_state.h"
#include "wizard/ending.h"

namespace {

struct Interrupted {};

/// Shows a screen until it waits for a key, and there leaves everything as it stands.
void interrupt_at_key(ScreenSession& session, int state) {
    screen_state = state;
    session.waits.then([] { throw Interrupted{}; });
    EXPECT_THROW(screen_table[state](), Interrupted);
}

void expect_nothing_left() {
    for (int state = 0; state < screen_count; ++state)
        EXPECT_EQ(built_screens[state], nullptr) << state;
    EXPECT_EQ(pending_frame(), nullptr);
    EXPECT_EQ(main_window, nullptr);
    EXPECT_EQ(interface_table, nullptr);
    EXPECT_EQ(relay_network_list, nullptr);
}

TEST(ReleaseScreens, does_nothing_before_anything_is_built) {
    release_screens();
    expect_nothing_left();
}

TEST(ReleaseScreens, leaves_nothing_of_the_screens_that_exist_from_the_start) {
    const ScreenSession session;
    release_screens();
    expect_nothing_left();
    EXPECT_EQ(panel_above(nullptr), nullptr);
}

TEST(ReleaseScreens, leaves_nothing_of_the_screens_that_were_built_on_a_visit_nor_of_a_box) {
    ScreenSession session;
    interrupt_at_key(session, state_aliases);
    interrupt_at_key(session, state_webadmin);
    interrupt_at_key(session, state_imap);
    showPending("Please wait!", "Operation pending!");
    release_screens();
    expect_nothing_left();
    EXPECT_EQ(panel_above(nullptr), nullptr);
}

TEST(ReleaseScreens, does_nothing_a_second_time) {
    const ScreenSession session;
    release_screens();
    release_screens();
    expect_nothing_left();
}

}  // namespace
