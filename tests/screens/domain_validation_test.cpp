// What the domain screen refuses.

#include <gtest/gtest.h>

#include "tests/screens/dialog_region.h"
#include "tests/screens/domain_rig.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

namespace {

TEST(DomainValidation, an_empty_domain_is_refused_and_the_focus_goes_to_the_domain) {
    DomainRig wizard;
    wizard.play({backspaces(11), "\t\tpw\t", Key::enter,
                 [&] {
                     EXPECT_EQ(screen_state, state_message);
                     expect_error_box(wizard.image(), "A blank domain is not allowed!");
                     EXPECT_FALSE(wizard.image().shows("Domain configuration"));
                 },
                 Key::enter});
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(screen_focus(state_domain), 0);
    EXPECT_EQ(wizard.domainShown(), "");
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains//");
    EXPECT_EQ(wizard.postmasterShown(), "**");
}

TEST(DomainValidation, an_empty_location_is_refused_though_the_domain_is_valid) {
    DomainRig wizard;
    wizard.play({Key::tab, retyped(""), "\tpw\t", Key::enter,
                 [&] {
                     EXPECT_EQ(screen_state, state_message);
                     expect_error_box(wizard.image(), "A blank domain location is not allowed!");
                 },
                 Key::enter});
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(screen_focus(state_domain), 1);
    EXPECT_EQ(wizard.domainShown(), "localdomain");
    EXPECT_EQ(wizard.locationShown(), "");
    EXPECT_EQ(wizard.postmasterShown(), "**");
    EXPECT_TRUE(wizard.image().cursor().visible);
    EXPECT_EQ(wizard.image().cursor().position, (Position{9, 28}));
}

TEST(DomainValidation, an_empty_postmaster_password_is_refused_and_the_focus_goes_to_it) {
    DomainRig wizard;
    wizard.play({"\t\t\t", Key::enter,
                 [&] {
                     EXPECT_EQ(screen_state, state_message);
                     expect_error_box(wizard.image(), "A blank password is not allowed!");
                 },
                 Key::enter});
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(screen_focus(state_domain), 4);
    EXPECT_EQ(wizard.domainShown(), "localdomain");
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/localdomain/");
    EXPECT_EQ(wizard.image().cursor().position, (Position{11, 40}));
}

TEST(DomainValidation, an_empty_domain_is_reported_first_when_all_is_empty) {
    DomainRig wizard;
    wizard.play({retyped(""), Key::tab, retyped(""), "\t\t", Key::enter});
    EXPECT_TRUE(wizard.image().shows("A blank domain is not allowed!"));
}

TEST(DomainValidation, an_empty_location_is_reported_before_an_empty_password) {
    DomainRig wizard;
    wizard.play({Key::tab, retyped(""), "\t\t", Key::enter});
    EXPECT_TRUE(wizard.image().shows("A blank domain location is not allowed!"));
}

TEST(DomainValidation, nothing_is_stored_before_all_is_valid) {
    DomainRig wizard;
    wizard.play({Key::tab, "x", "\t\t", Key::enter, Key::enter});
    EXPECT_STREQ(wizard_settings.domain_location, "");
    EXPECT_STREQ(wizard_settings.postmaster_password, "");
    wizard.play({"pw\t", Key::enter});
    EXPECT_EQ(screen_state, state_aliases);
    EXPECT_STREQ(wizard_settings.domain_location, "/var/opt/teluma/domains/localdomain/x");
    EXPECT_STREQ(wizard_settings.postmaster_password, "pw");
}

}  // namespace
