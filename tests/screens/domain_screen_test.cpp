#include <gtest/gtest.h>

#include <string>

#include "screens/screen_table.h"
#include "tests/screens/domain_rig.h"
#include "tests/screens/long_texts.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

namespace {

TEST(DomainScreen, TAB_moves_from_domain_to_location_to_postmaster_to_next_to_back_and_round) {
    DomainRig wizard;
    for (const int focus : {0, 1, 4, 2, 3, 0}) {
        EXPECT_EQ(screen_focus(state_domain), focus);
        wizard.play({Key::tab});
    }
}

TEST(DomainScreen, Enter_moves_on_from_each_of_the_fields) {
    DomainRig wizard;
    for (const int focus : {0, 1, 4, 2}) {
        EXPECT_EQ(screen_focus(state_domain), focus);
        if (focus != 2)
            wizard.play({Key::enter});
    }
}

TEST(DomainScreen, next_stores_the_answers_and_leads_to_the_list_of_the_alias_screen) {
    for (const Key press : {Key::enter, Key::space}) {
        DomainRig wizard;
        screen_focus(state_aliases) = 2;
        wizard.play({retyped("example.com"), Key::tab, retyped("/srv/mail"), Key::tab, "s3cret",
                     Key::tab, press});
        EXPECT_STREQ(wizard_settings.primary_domain, "example.com");
        EXPECT_STREQ(wizard_settings.domain_location, "/srv/mail");
        EXPECT_STREQ(wizard_settings.postmaster_password, "s3cret");
        EXPECT_EQ(screen_state, state_aliases);
        EXPECT_EQ(screen_focus(state_aliases), 0);
        EXPECT_TRUE(wizard.image().shows("Alias Configuration"));
        EXPECT_TRUE(wizard.image().shows("\"example.com\""));
        EXPECT_FALSE(wizard.image().shows("Domain configuration"));
    }
}

TEST(DomainScreen, back_leads_to_the_first_field_of_the_password_screen_and_stores_nothing) {
    for (const Key press : {Key::enter, Key::space}) {
        DomainRig wizard;
        screen_focus(state_password) = 2;
        wizard.play({retyped("example.com"), "\t\t", "s3cret", "\t\t", press});
        EXPECT_EQ(screen_state, state_password);
        EXPECT_EQ(screen_focus(state_password), 0);
        EXPECT_TRUE(wizard.image().shows("Please enter admin's password"));
        EXPECT_STREQ(wizard_settings.domain_location, "");
        EXPECT_STREQ(wizard_settings.postmaster_password, "");
    }
}

TEST(DomainScreen, what_was_typed_is_still_there_after_going_back_and_forth) {
    DomainRig wizard;
    wizard.play({retyped("example.com"), "\t\t", "s3cret", "\t\t", Key::enter,  // back
                 "pw\tpw\t", Key::enter});
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(wizard.domainShown(), "example.com");
    EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/example.com/");
    EXPECT_EQ(wizard.postmasterShown(), "******");
}

TEST(DomainScreen, the_postmaster_password_is_shown_as_stars_only) {
    DomainRig wizard;
    wizard.play({"\t\t", "7%7%7"});
    EXPECT_EQ(wizard.postmasterShown(), "*****");
    EXPECT_FALSE(wizard.terminalImage().shows("7"));
    EXPECT_FALSE(wizard.terminalImage().shows("%"));
}

TEST(DomainScreen, a_domain_of_50_characters_is_taken_and_the_51st_is_refused) {
    const std::string longest = fifty_characters;
    DomainRig wizard;
    wizard.play({retyped(longest + "x"),
                 [&] { EXPECT_EQ(wizard.domainShown(), longest.substr(50 - 39)); }, "\t\tpw\t",
                 Key::enter});
    EXPECT_EQ(wizard_settings.primary_domain, longest);
}

TEST(DomainScreen, a_location_of_252_characters_is_taken_and_the_253rd_is_refused) {
    const std::string longest = "/" + std::string(200, 'L') + fifty_characters + "/";
    ASSERT_EQ(longest.size(), 252u);
    DomainRig wizard;
    wizard.play({Key::tab, retyped(longest + "x"),
                 [&] { EXPECT_EQ(wizard.locationShown(), longest.substr(252 - 38)); }, "\tpw\t",
                 Key::enter});
    EXPECT_EQ(wizard_settings.domain_location, longest);
}

TEST(DomainScreen, a_postmaster_password_of_50_characters_is_accepted_but_stored_as_its_first_49) {
    const std::string longest = fifty_characters;
    DomainRig wizard;
    wizard.play({"\t\t", longest, "\t", Key::enter});
    EXPECT_EQ(screen_state, state_aliases);
    EXPECT_EQ(wizard_settings.postmaster_password, longest.substr(0, 49));
}

TEST(DomainScreen, the_postmaster_field_shows_26_stars_at_most_and_refuses_the_51st_character) {
    DomainRig wizard;
    wizard.play({"\t\t", std::string(51, 'x')});
    EXPECT_EQ(wizard.postmasterShown(), std::string(26, '*'));
    // Of 50 characters 20 are left; of 51 it would be 21.
    wizard.play({backspaces(30)});
    EXPECT_EQ(wizard.postmasterShown(), std::string(20, '*'));
}

TEST(DomainScreen, neither_the_form_of_the_answers_nor_the_strength_of_the_password_is_checked) {
    DomainRig wizard;
    wizard.play({retyped("no domain!"), Key::tab, retyped("not there"), Key::tab, "1", Key::tab,
                 Key::enter});
    EXPECT_EQ(screen_state, state_aliases);
    EXPECT_STREQ(wizard_settings.primary_domain, "no domain!");
    EXPECT_STREQ(wizard_settings.domain_location, "not there");
    EXPECT_STREQ(wizard_settings.postmaster_password, "1");
}

}  // namespace
