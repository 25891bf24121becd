#include <gtest/gtest.h>

#include <string>

#include "screens/screen.h"
#include "screens/screen_table.h"
#include "tests/screens/domain_rig.h"
#include "tests/screens/long_texts.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

namespace {

/// The wizard on the alias screen of a domain.
class AliasRig : public WizardRig {
  public:
    explicit AliasRig(const std::string& domain = "example.com") : WizardRig(state_aliases) {
        answer_domain(domain);
    }

    /// The check boxes from the top: "xxx" where all are ticked.
    std::string ticksShown() {
        std::string ticks;
        for (const int row : {10, 11, 12})
            ticks += image().cell(row, 11).text;
        return ticks;
    }
};

/// The answers in the settings in the order of the list, 1 for one that is chosen.
std::string aliases_stored() {
    return std::to_string(wizard_settings.alias_root_to_postmaster) +
           std::to_string(wizard_settings.alias_localhost) +
           std::to_string(wizard_settings.alias_localhost_localdomain);
}

TEST(AliasScreen, all_aliases_are_chosen_at_first) {
    AliasRig wizard;
    wizard.play({});
    EXPECT_EQ(aliases_stored(), "111");
    EXPECT_EQ(wizard.ticksShown(), "xxx");
}

TEST(AliasScreen, shows_the_choices_that_the_settings_hold) {
    AliasRig wizard;
    wizard_settings.alias_localhost = 0;
    wizard.play({});
    EXPECT_EQ(wizard.ticksShown(), "x x");
}

TEST(AliasScreen, space_and_Enter_in_the_list_toggle_the_entry_under_the_bar_and_stay) {
    AliasRig wizard;
    wizard.play({Key::enter, [&] { EXPECT_EQ(wizard.ticksShown(), " xx"); }, Key::down, Key::space,
                 [&] { EXPECT_EQ(wizard.ticksShown(), "  x"); }, Key::down, Key::down, Key::enter,
                 [&] { EXPECT_EQ(wizard.ticksShown(), "   "); }, Key::up, Key::enter});
    EXPECT_EQ(wizard.ticksShown(), " x ");
    EXPECT_EQ(screen_state, state_aliases);
    EXPECT_EQ(screen_focus(state_aliases), 0);
}

class AliasScreenLeft : public testing::TestWithParam<Key> {};

TEST_P(AliasScreenLeft, forwards_leads_to_the_list_of_the_WebAdmin_screen) {
    AliasRig wizard;
    screen_focus(state_webadmin) = 3;
    wizard.play({"\t", GetParam()});
    EXPECT_EQ(screen_state, state_webadmin);
    EXPECT_EQ(screen_focus(state_webadmin), 0);
    EXPECT_TRUE(wizard.image().shows("Select WebAdmin Interface"));
    EXPECT_FALSE(wizard.image().shows("Alias Configuration"));
}

TEST_P(AliasScreenLeft, backwards_leads_to_the_first_field_of_the_domain_screen) {
    AliasRig wizard;
    screen_focus(state_domain) = 3;
    wizard.play({"\t\t", GetParam()});
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(screen_focus(state_domain), 0);
    EXPECT_TRUE(wizard.image().shows("Domain configuration"));
    EXPECT_FALSE(wizard.image().shows("Alias Configuration"));
}

INSTANTIATE_TEST_SUITE_P(ByEnterAndSpace, AliasScreenLeft, testing::Values(Key::enter, Key::space));

TEST(AliasScreen, every_combination_of_choices_is_stored_whichever_way_the_user_leaves) {
    for (const char* to_button : {"\t", "\t\t"}) {
        for (int combination = 0; combination < 8; ++combination) {
            AliasRig wizard;
            std::vector<Step> steps;
            std::string expected;
            for (int entry = 0; entry < 3; ++entry) {
                const bool chosen = (combination >> entry & 1) != 0;
                expected += chosen ? '1' : '0';
                if (!chosen)
                    steps.emplace_back(Key::space);
                steps.emplace_back(Key::down);
            }
            wizard.play(steps + std::vector<Step>{to_button, Key::enter});
            EXPECT_EQ(aliases_stored(), expected) << to_button;
        }
    }
}

TEST(AliasScreen, is_released_when_it_is_left) {
    AliasRig wizard;
    wizard.play({"\t", Key::enter});
    EXPECT_EQ(built_screens[state_aliases], nullptr);
}

TEST(AliasScreen, names_a_domain_that_was_changed_meanwhile_and_keeps_its_check_marks) {
    DomainRig wizard;
    wizard.play({"\t\tpw\t", Key::enter,                                         // to the aliases
                 [&] { EXPECT_TRUE(wizard.image().shows("\"localdomain\"")); },  //
                 Key::down, Key::space, "\t\t", Key::enter,                      // and back
                 retyped("example.com"), "\t\t\t", Key::enter});                 // and again
    EXPECT_EQ(screen_state, state_aliases);
    EXPECT_TRUE(wizard.image().shows("\"example.com\""));
    EXPECT_FALSE(wizard.image().shows("localdomain\""));
    EXPECT_TRUE(wizard.image().shows("[x] Redirect all mails for root account to postmaster"));
    EXPECT_TRUE(wizard.image().shows("[ ] Add the 'localhost' alias to this domain"));
    EXPECT_TRUE(wizard.image().shows("[x] Add the 'localhost.localdomain' alias to this domain"));
}

TEST(AliasScreen, a_short_domain_leaves_the_question_on_one_line) {
    AliasRig wizard("a.b");
    wizard.play({});
    EXPECT_SCREEN(wizard.image(), "golden/aliases_of_a_short_domain");
}

TEST(AliasScreen, a_long_domain_makes_it_taller_and_does_not_move_its_top) {
    AliasRig wizard(fifty_characters + std::string(".a-domain-on-three-lines.example.com"));
    wizard.play({});
    EXPECT_SCREEN(wizard.image(), "golden/aliases_of_a_long_domain");
}

TEST(AliasScreen, a_domain_of_many_lines_reaches_over_the_end_of_the_terminal) {
    AliasRig wizard(std::string(350, 'd'));
    wizard.play({[&] { EXPECT_SCREEN(wizard.image(), "golden/aliases_of_a_huge_domain"); }, "\t\t",
                 Key::enter});
    EXPECT_EQ(screen_state, state_domain);
}

TEST(AliasScreen, the_longest_domain_that_the_settings_hold_does_no_harm) {
    AliasRig wizard(std::string(750, 'd'));
    wizard.play({Key::space, "\t", Key::enter});
    EXPECT_EQ(screen_state, state_webadmin);
    EXPECT_EQ(aliases_stored(), "011");
}

TEST(AliasScreen, a_domain_that_looks_like_a_format_is_shown_as_it_is) {
    AliasRig wizard("100%s%d%n.com");
    wizard.play({});
    EXPECT_TRUE(wizard.image().shows("\"100%s%d%n.com\""));
}

}  // namespace
