#include "wizard/base/wizard_settings.h"

#include <gtest/gtest.h>

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

}  // namespace
