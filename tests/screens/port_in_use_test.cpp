// The warning that another program uses the port.

#include <gtest/gtest.h>

#include <string>

#include "tests/screens/dialog_region.h"
#include "tests/screens/listener_rig.h"
#include "tests/support/case_name.h"
#include "tests/support/expect_screen.h"
#include "tests/support/local_port.h"
#include "wizard/base/screen_state.h"

namespace {

constexpr char warning_title[] = "Warning!";

class PortInUse : public testing::TestWithParam<ListenerFacts> {
  protected:
    PortInUse() { port.open(); }

    /// Chooses a row and the port that is in use, and goes on with `answer`.
    void playWithPort(int row, const std::vector<Step>& answer) {
        wizard.play(answer_listener(row, number) + answer);
    }

    const ListenerFacts& listener = GetParam();
    ListenerRig wizard{listener};
    LocalPort port;
    std::string number = std::to_string(port.number());
};

TEST_P(PortInUse, is_reported_with_port_address_and_the_document_that_helps) {
    playWithPort(row_eth0, {[&] { EXPECT_EQ(screen_state, state_retry_back); }});
    EXPECT_EQ(words_on(wizard.image().region(3, 10, 17, 60)),
              "Warning! There is already an application that binds the " + number +
                  " port on the selected interface 127.0.0.2. Please stop that application and "
                  "remove it from the automatic startup daemons at boot. More information about "
                  "stopping common applications can be found in the "
                  "/opt/teluma/share/doc/REMOVE-OTHERS.txt document. Back Retry ");
    EXPECT_FALSE(wizard.image().shows(listener.title));
    EXPECT_FALSE(wizard.image().shows("Operation pending!"));
}

TEST_P(PortInUse, back_leads_to_the_port_field_of_the_screen) {
    playWithPort(row_eth0, {Key::tab, Key::enter});
    EXPECT_EQ(screen_state, listener.state);
    EXPECT_EQ(screen_focus(listener.state), 1);
    EXPECT_TRUE(wizard.image().shows(listener.title));
    EXPECT_TRUE(wizard.cursorInPort(row_eth0, 5));
    EXPECT_COLOURS(wizard.image().region(15, 25 + 21, 1, 6), "\nrrrrrr\n");
}

TEST_P(PortInUse, retry_while_it_is_still_used_warns_again_as_often_as_it_is_pressed) {
    int warnings = 0;
    const Step count = [&] {
        EXPECT_EQ(screen_state, state_retry_back);
        EXPECT_TRUE(wizard.image().shows(warning_title));
        ++warnings;
    };
    playWithPort(row_eth0, {count, Key::enter, count, Key::enter, count, Key::enter, count,
                            Key::tab, Key::enter});
    EXPECT_EQ(warnings, 4);
    EXPECT_EQ(screen_state, listener.state);
    EXPECT_EQ(screen_focus(listener.state), 1);
}

TEST_P(PortInUse, retry_once_it_is_free_goes_on_without_the_loopback_question) {
    playWithPort(row_lo, {[&] { port.close(); }, Key::enter});
    EXPECT_EQ(screen_state, listener.next_state);
    EXPECT_EQ(screen_focus(state_smtp), 0);
    EXPECT_EQ(wizard.chosenInterface(), row_lo);
    EXPECT_FALSE(wizard.image().shows("WARNING!"));
    EXPECT_FALSE(wizard.image().shows(listener.title));
}

TEST_P(PortInUse, retry_goes_on_when_the_port_became_free_after_some_attempts) {
    playWithPort(row_lo, {Key::enter, Key::enter, [&] { port.close(); }, Key::space});
    EXPECT_EQ(screen_state, listener.next_state);
}

TEST_P(PortInUse, retry_probes_under_a_pending_box) {
    wizard.waits.inSleep = [&] {
        EXPECT_EQ(screen_state, state_pending);
        EXPECT_TRUE(wizard.image().shows("Please wait until the port is being checked!"));
        EXPECT_FALSE(wizard.image().shows(warning_title));
    };
    playWithPort(row_eth0, {Key::enter});
    EXPECT_EQ(wizard.waits.sleeps, (std::vector<int>{0, 0}));
}

TEST_P(PortInUse, on_another_interface_does_not_matter) {
    port.close();
    port.open("127.0.0.1");
    playWithPort(row_eth0, {});
    EXPECT_EQ(screen_state, listener.next_state);
}

TEST_P(PortInUse, on_any_interface_matters_for_all_of_them) {
    port.close();
    port.open("127.0.0.1");
    playWithPort(row_all, {});
    EXPECT_TRUE(wizard.image().shows(warning_title));
}

INSTANTIATE_TEST_SUITE_P(Screens, PortInUse, testing::ValuesIn(all_listeners()), CaseName());

class ServicePortInUse : public PortInUse {};

TEST_P(ServicePortInUse, retry_once_it_is_free_does_not_store_the_port) {
    wizard.setChosenPort(77);
    playWithPort(row_lo, {[&] { port.close(); }, Key::enter});
    EXPECT_EQ(screen_state, listener.next_state);
    EXPECT_EQ(wizard.chosenPort(), 77);
}

TEST_P(ServicePortInUse, retry_once_it_is_free_sends_the_focus_of_the_services_screen_to_its_list) {
    screen_focus(state_services) = 2;
    playWithPort(row_lo, {[&] { port.close(); }, Key::enter});
    EXPECT_EQ(screen_focus(state_services), 0);
}

TEST_P(ServicePortInUse, back_stores_the_row_but_not_the_port) {
    wizard.setChosenPort(77);
    playWithPort(row_eth0, {Key::tab, Key::enter});
    EXPECT_EQ(wizard.chosenInterface(), row_eth0);
    EXPECT_EQ(wizard.chosenPort(), 77);
}

INSTANTIATE_TEST_SUITE_P(Screens, ServicePortInUse, testing::ValuesIn(service_facts()), CaseName());

class WebAdminPortInUse : public PortInUse {};

TEST_P(WebAdminPortInUse, stores_the_port_before_it_warns) {
    playWithPort(row_eth0, {[&] { EXPECT_EQ(wizard.chosenPort(), port.number()); }});
}

TEST_P(WebAdminPortInUse, retry_once_it_is_free_sends_the_focus_of_the_SMTP_screen_to_its_list) {
    screen_focus(state_smtp) = 3;
    playWithPort(row_eth0, {[&] { port.close(); }, Key::enter});
    EXPECT_EQ(screen_state, state_smtp);
    EXPECT_EQ(screen_focus(state_smtp), 0);
}

TEST_P(WebAdminPortInUse, retry_once_it_is_free_leaves_the_focus_of_the_services_screen_alone) {
    screen_focus(state_services) = 2;
    playWithPort(row_eth0, {[&] { port.close(); }, Key::enter});
    EXPECT_EQ(screen_focus(state_services), 2);
}

INSTANTIATE_TEST_SUITE_P(Screens, WebAdminPortInUse, testing::Values(webadmin_facts()), CaseName());

}  // namespace
