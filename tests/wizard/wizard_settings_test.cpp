#include "wizard/base/wizard_settings.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <iterator>

namespace {

const WizardSettings fresh{};

TEST(WizardSettings, have_room_for_the_longest_answers) {
    EXPECT_EQ(sizeof fresh.admin_password, 51U);
    EXPECT_EQ(sizeof fresh.primary_domain, 751U);
    EXPECT_EQ(sizeof fresh.domain_location, 751U);
    EXPECT_EQ(sizeof fresh.postmaster_password, 50U);
    EXPECT_EQ(std::size(fresh.service_enabled), 3U);
    EXPECT_EQ(std::size(fresh.relay_ticks), 40U);
    EXPECT_EQ(std::size(fresh.relay_selected), 104U);
}

TEST(WizardSettings, begin_with_all_aliases_and_the_usual_ports) {
    EXPECT_EQ(fresh.alias_root_to_postmaster, 1);
    EXPECT_EQ(fresh.alias_localhost, 1);
    EXPECT_EQ(fresh.alias_localhost_localdomain, 1);
    EXPECT_EQ(fresh.smtp_port, 25);
    EXPECT_EQ(fresh.pop3_port, 110);
    EXPECT_EQ(fresh.imap_port, 143);
    EXPECT_EQ(fresh.webmail_port, 80);
}

TEST(WizardSettings, begin_without_any_other_answer_and_with_no_step_done) {
    for (const char* text : {fresh.admin_password, fresh.primary_domain, fresh.domain_location,
                             fresh.postmaster_password})
        EXPECT_STREQ(text, "");
    for (const int number :
         {fresh.webadmin_interface, fresh.webadmin_port, fresh.smtp_interface, fresh.pop3_interface,
          fresh.imap_interface, fresh.webmail_interface, fresh.relay_selected_count,
          fresh.sendmail_wrapper, fresh.done_password, fresh.done_login, fresh.done_domain,
          fresh.done_webadmin, fresh.done_smtp, fresh.done_services, fresh.done_relay,
          fresh.done_sendmail})
        EXPECT_EQ(number, 0);
    for (const unsigned char byte :
         {fresh.service_enabled[0], fresh.service_enabled[1], fresh.service_enabled[2],
          fresh.done_aliases, fresh.apply_running})
        EXPECT_EQ(byte, 0);
}

}  // namespace
