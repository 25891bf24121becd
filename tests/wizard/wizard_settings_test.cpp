#include "wizard/base/wizard_settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace {

// The record as the program starts with it.
const WizardSettings& fresh = wizard_settings;

TEST(WizardSettings, texts_have_room_for_50_750_750_and_49_characters) {
    EXPECT_EQ(sizeof fresh.admin_password, 51U);
    EXPECT_EQ(sizeof fresh.primary_domain, 751U);
    EXPECT_EQ(sizeof fresh.domain_location, 751U);
    EXPECT_EQ(sizeof fresh.postmaster_password, 50U);
}

TEST(WizardSettings, texts_are_empty_at_first) {
    EXPECT_STREQ(fresh.admin_password, "");
    EXPECT_STREQ(fresh.primary_domain, "");
    EXPECT_STREQ(fresh.domain_location, "");
    EXPECT_STREQ(fresh.postmaster_password, "");
}

TEST(WizardSettings, all_aliases_are_chosen_at_first) {
    EXPECT_EQ(fresh.alias_root_to_postmaster, 1);
    EXPECT_EQ(fresh.alias_localhost, 1);
    EXPECT_EQ(fresh.alias_localhost_localdomain, 1);
}

TEST(WizardSettings, every_listener_is_on_all_interfaces_at_first) {
    EXPECT_EQ(fresh.webadmin_interface, 0);
    EXPECT_EQ(fresh.smtp_interface, 0);
    EXPECT_EQ(fresh.pop3_interface, 0);
    EXPECT_EQ(fresh.imap_interface, 0);
    EXPECT_EQ(fresh.webmail_interface, 0);
}

TEST(WizardSettings, listeners_have_their_usual_ports_and_webadmin_none_at_first) {
    EXPECT_EQ(fresh.webadmin_port, 0);
    EXPECT_EQ(fresh.smtp_port, 25);
    EXPECT_EQ(fresh.pop3_port, 110);
    EXPECT_EQ(fresh.imap_port, 143);
    EXPECT_EQ(fresh.webmail_port, 80);
}

TEST(WizardSettings, pop3_imap_and_webmail_in_this_order_are_off_at_first) {
    EXPECT_EQ(service_pop3, 0);
    EXPECT_EQ(service_imap, 1);
    EXPECT_EQ(service_webmail, 2);
    ASSERT_EQ(std::size(fresh.service_enabled), 3U);
    for (const unsigned char enabled : fresh.service_enabled)
        EXPECT_EQ(enabled, 0);
}

TEST(WizardSettings, relay_has_room_for_every_network_and_none_selected_at_first) {
    EXPECT_EQ(std::size(fresh.relay_ticks), 40U);
    EXPECT_EQ(std::size(fresh.relay_selected), 104U);
    EXPECT_EQ(fresh.relay_selected_count, 0);
}

TEST(WizardSettings, the_sendmail_wrapper_is_not_wanted_at_first) {
    EXPECT_EQ(fresh.sendmail_wrapper, 0);
}

TEST(WizardSettings, no_step_is_done_and_nothing_applied_at_first) {
    EXPECT_EQ(fresh.done_password, 0);
    EXPECT_EQ(fresh.done_login, 0);
    EXPECT_EQ(fresh.done_domain, 0);
    EXPECT_EQ(fresh.done_aliases, 0);
    EXPECT_EQ(fresh.done_webadmin, 0);
    EXPECT_EQ(fresh.done_smtp, 0);
    EXPECT_EQ(fresh.done_services, 0);
    EXPECT_EQ(fresh.done_relay, 0);
    EXPECT_EQ(fresh.done_sendmail, 0);
    EXPECT_EQ(fresh.apply_running, 0);
}

}  // namespace
