// What is particular about the screens with check boxes and the last one; their answers are the
// walk model's.

#include <gtest/gtest.h>

#include "tests/screens/screen_facts.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"

namespace {

/// The wizard on the alias screen of a domain.
class AliasRig : public WizardRig {
  public:
    explicit AliasRig(const std::string& domain) : WizardRig(state_aliases) {
        domain.copy(wizard_settings.primary_domain, sizeof wizard_settings.primary_domain - 1);
    }
};

TEST(AliasScreen, has_its_question_on_as_many_lines_as_the_domain_needs_and_keeps_its_top) {
    const std::pair<std::string, std::string> domains[] = {
        {"a.b", "golden/aliases_of_a_short_domain"},
        {fifty_characters + std::string(".a-domain-on-three-lines.example.com"),
         "golden/aliases_of_a_long_domain"},
        {std::string(350, 'd'), "golden/aliases_of_a_huge_domain"}};
    for (const auto& [domain, golden] : domains) {
        AliasRig wizard(domain);
        wizard.play({});
        EXPECT_SCREEN(wizard.image(), golden);
    }
}

TEST(AliasScreen, takes_its_keys_with_the_longest_domain_of_which_not_all_is_seen) {
    AliasRig wizard(std::string(750, 'd'));
    wizard.play({Key::space, "\t", Key::enter});
    EXPECT_EQ(screen_state, state_webadmin);
    EXPECT_EQ(wizard_settings.alias_root_to_postmaster, 0);
    EXPECT_EQ(wizard_settings.alias_localhost, 1);
}

TEST(AliasScreen, shows_a_domain_that_looks_like_a_format_as_it_is) {
    AliasRig wizard("100%s%d%n.com");
    wizard.play({});
    EXPECT_TRUE(wizard.image().shows("\"100%s%d%n.com\""));
}

TEST(RelayScreen, without_networks_has_an_empty_list_in_which_keys_do_nothing) {
    RigSetup setup;
    setup.networks.clear();
    WizardRig wizard(state_relay, setup);
    wizard.play({Key::space, Key::enter, Key::down, Key::up});
    EXPECT_SCREEN(wizard.image(), "golden/relay_without_networks");
    wizard.play({"\t", Key::enter});
    EXPECT_EQ(screen_state, state_sendmail);
    EXPECT_EQ(wizard_settings.relay_ticks[0], 0);
}

/// The smallest terminal and a host with so many networks.
RigSetup small_terminal(int networks) {
    RigSetup setup{{20, 72}};
    setup.networks.clear();
    for (int i = 0; i < networks; ++i)
        setup.networks.push_back({"10." + std::to_string(i) + ".0.0", "255.255.0.0"});
    return setup;
}

TEST(RelayScreen, with_four_networks_fits_into_the_smallest_terminal) {
    WizardRig wizard(state_relay, small_terminal(4));
    wizard.play({"\t"});
    EXPECT_SCREEN(wizard.image(), "golden/relay_with_4_networks");
}

TEST(RelayScreen, with_all_networks_that_there_can_be_shows_what_fits_and_takes_keys_unseen) {
    WizardRig wizard(state_relay, small_terminal(39));
    wizard.play({"\t\t\t"});
    EXPECT_SCREEN(wizard.image(), "golden/relay_with_39_networks");
    wizard.play(std::vector<Step>(38, Key::down) + std::vector<Step>{" \t\t", Key::space});
    EXPECT_EQ(screen_state, state_services);
    EXPECT_EQ(wizard_settings.relay_ticks[37], 1);
    EXPECT_EQ(wizard_settings.relay_ticks[38], 0);
}

TEST(SendmailScreen, starts_the_apply_sequence_with_the_answer_stored_and_the_screen_closed) {
    for (const Key press : {Key::enter, Key::space}) {
        for (const int yes : {1, 0}) {
            WizardRig wizard(state_sendmail);
            wizard_settings.sendmail_wrapper = 7;
            EXPECT_EQ(wizard.play({yes ? "" : "\t", press}), WizardEnd::completed);
            EXPECT_EQ(apply_double.calls, 1);
            EXPECT_EQ(apply_double.sendmail_wrapper, yes);
            EXPECT_EQ(apply_double.state, state_sendmail);
            EXPECT_TRUE(apply_double.screen_is_gone);
        }
    }
}

TEST(SendmailScreen, ends_the_wizard_when_the_apply_sequence_does) {
    WizardRig wizard(state_sendmail);
    apply_double.end = WizardEnd::without_login;
    apply_double.leads_to = state_sendmail;
    EXPECT_EQ(wizard.play({Key::enter}), WizardEnd::without_login);
}

}  // namespace
