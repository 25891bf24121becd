// The answers that the domain screen offers, and how the location follows the domain.

#include <gtest/gtest.h>

#include <string>

#include "tests/screens/domain_rig.h"
#include "tests/screens/host_domain.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

namespace {

class DomainDefault : public testing::Test {
  protected:
    ~DomainDefault() override { host_domain = "(none)"; }
};

TEST_F(DomainDefault, a_host_whose_domain_is_none_offers_localdomain_and_its_directory) {
    host_domain = "(none)";
    DomainRig wizard;
    wizard.play({});
    EXPECT_EQ(wizard.domainShown(), "localdomain");
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/localdomain/");
}

TEST_F(DomainDefault, a_host_whose_domain_is_empty_offers_localdomain_and_its_directory) {
    host_domain = "";
    DomainRig wizard;
    wizard.play({});
    EXPECT_EQ(wizard.domainShown(), "localdomain");
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/localdomain/");
}

TEST_F(DomainDefault, the_domain_of_the_host_is_offered) {
    host_domain = "example.org";
    DomainRig wizard;
    wizard.play({"\t\tpw\t", Key::enter});
    EXPECT_STREQ(wizard_settings.primary_domain, "example.org");
    EXPECT_STREQ(wizard_settings.domain_location, "/var/opt/teluma/domains/example.org/");
}

TEST_F(DomainDefault, a_domain_that_only_begins_like_none_is_offered) {
    host_domain = "(none).org";
    DomainRig wizard;
    wizard.play({});
    EXPECT_EQ(wizard.domainShown(), "(none).org");
}

TEST_F(DomainDefault, a_host_domain_too_long_for_the_field_counts_as_none) {
    for (const size_t length : {51, 200, 201, 250}) {
        host_domain = std::string(length, 'a');
        DomainRig wizard;
        wizard.play({});
        EXPECT_EQ(wizard.domainShown(), "localdomain");
    }
}

TEST(DomainLocation, is_put_together_in_the_setting_of_the_primary_domain) {
    DomainRig wizard;
    wizard.play({});
    EXPECT_STREQ(wizard_settings.primary_domain, "/var/opt/teluma/domains/localdomain/");
}

TEST(DomainLocation, follows_the_domain_each_time_TAB_leaves_the_domain_field) {
    DomainRig wizard;
    wizard.play({retyped("example.co"), Key::tab});
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/example.co/");
    wizard.play({"\t\t\t\t", "m", Key::tab});
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/example.com/");
}

TEST(DomainLocation, follows_the_domain_when_Enter_leaves_the_domain_field) {
    DomainRig wizard;
    wizard.play({retyped("example.com"), Key::enter});
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/example.com/");
}

TEST(DomainLocation, does_not_follow_before_the_focus_leaves_the_domain_field) {
    DomainRig wizard;
    wizard.play({"x"});
    EXPECT_EQ(wizard.domainShown(), "localdomainx");
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/localdomain/");
}

TEST(DomainLocation, follows_the_domain_when_the_screen_is_drawn_again) {
    DomainRig wizard;
    wizard.play({"x"});
    wizard.play({});
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/localdomainx/");
}

TEST(DomainLocation, is_left_alone_once_it_has_been_edited_by_hand) {
    DomainRig wizard;
    wizard.play({Key::tab, "mine", "\t\t\t\t", retyped("example.com"), "\t\tpw\t", Key::enter});
    EXPECT_STREQ(wizard_settings.primary_domain, "example.com");
    EXPECT_STREQ(wizard_settings.domain_location, "/var/opt/teluma/domains/localdomain/mine");
}

TEST(DomainLocation, counts_as_edited_by_a_key_that_changes_nothing) {
    DomainRig wizard;
    wizard.play({Key::tab, Key::left, "\t\t\t\t", retyped("example.com"), Key::tab});
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/localdomain/");
}

TEST(DomainLocation, does_not_count_as_edited_by_TAB_and_Enter) {
    DomainRig wizard;
    wizard.play({Key::tab, Key::enter, "\t\t\t", Key::tab, Key::tab, "\t\t\t",
                 retyped("example.com"), Key::tab});
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/example.com/");
}

TEST(DomainLocation, stays_edited_on_later_visits) {
    DomainRig wizard;
    wizard.play({Key::tab, "my", "\t\t\t", Key::enter,  // back to the password screen
                 "pw\tpw\t", Key::enter, retyped("example.com"), Key::tab});
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/localdomain/my");
}

}  // namespace
