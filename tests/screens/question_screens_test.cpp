// What is particular about the screens other than the listeners'; their answers are the walk
// model's.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>

#include "tests/screens/screen_facts.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"

/// What the host says its NIS domain is.
static std::string host_domain = "(none)";

// In the place of the C library's.
int getdomainname(char* name, size_t size) noexcept {
    std::strncpy(name, host_domain.c_str(), size);
    return 0;
}

namespace {

TEST(PasswordScreen, different_passwords_give_an_error_and_keep_the_texts) {
    WizardRig wizard(state_password);
    std::strcpy(wizard_settings.admin_password, "before");
    wizard.play({"secret", Key::tab, "Secre", Key::tab, Key::enter,
                 [&] { EXPECT_EQ(wizard.words(), "Error! Passwords do not match! OK "); },
                 Key::enter});
    EXPECT_STREQ(wizard_settings.admin_password, "before");
    EXPECT_PICTURE(wizard.image().region(8, 17, 3, 45), R"(
│ Password:******                           │
│                                           │
│ Validate:*****                            │
)");
    EXPECT_TRUE(wizard.image().cursor().visible);
    EXPECT_EQ(wizard.image().cursor().position, (Position{8, 34}));
}

TEST(PasswordScreen, two_empty_passwords_are_blank_and_not_different) {
    WizardRig wizard(state_password);
    std::strcpy(wizard_settings.admin_password, "before");
    wizard.play({"\t\t", Key::enter});
    EXPECT_EQ(wizard.words(), "Error! A blank password is not allowed! OK ");
    EXPECT_STREQ(wizard_settings.admin_password, "");
}

TEST(PasswordScreen, fifty_characters_are_taken_and_30_shown) {
    const std::string longest = fifty_characters;
    WizardRig wizard(state_password);
    wizard.play({longest + "x", Key::tab, longest,
                 [&] {
                     EXPECT_PICTURE(wizard.image().region(8, 17, 3, 45), R"(
│ Password:******************************   │
│                                           │
│ Validate:******************************   │
)");
                     EXPECT_EQ(wizard.image().cursor().position, (Position{10, 58}));
                 },
                 Key::tab, Key::enter});
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(wizard_settings.admin_password, longest);
}

TEST(PasswordScreen, leaves_the_wizard_by_its_exit_button_with_nothing_stored_or_applied) {
    for (const Key press : {Key::enter, Key::space}) {
        WizardRig wizard(state_password);
        EXPECT_EQ(wizard.play({"secret", "\t\t\t", press}), WizardEnd::left);
        EXPECT_STREQ(wizard_settings.admin_password, "");
        EXPECT_EQ(apply_double.calls, 0);
    }
}

TEST(PasswordFields, send_no_character_of_a_password_to_the_terminal) {
    const std::pair<int, std::string> screens[] = {{state_password, "7%7%7\t9#9#9\t"},
                                                   {state_domain, "\t\t7%7%7\t"}};
    for (const auto& [state, keys] : screens) {
        WizardRig wizard(state);
        wizard.play({keys, Key::enter, Key::enter});
        for (const char* typed : {"7%", "%7", "9#", "#9"})
            EXPECT_EQ(wizard.terminal.outputBytes().find(typed), std::string::npos) << typed;
    }
}

/// The wizard on its domain screen, on a host of that domain.
class DomainRig : public WizardRig {
  public:
    explicit DomainRig(const std::string& domain = "(none)")
        : WizardRig((host_domain = domain, state_domain)) {}

    void expectShown(const std::string& domain, const std::string& location) {
        EXPECT_TRUE(image().shows("Primary Domain:" + domain + " ")) << image().text();
        EXPECT_TRUE(image().shows("Domain Location:" + location + " ")) << image().text();
    }
};

TEST(DomainDefault, is_that_of_the_host_with_its_directory) {
    for (const std::string domain : {"example.org", "(none).org", "!an example~"}) {
        DomainRig wizard(domain);
        wizard.play({});
        wizard.expectShown(domain, "/var/opt/teluma/domains/" + domain + "/");
    }
}

TEST(DomainDefault, fills_the_field_at_most) {
    DomainRig wizard(fifty_characters);
    wizard.play({"\t\tpw\t", Key::enter});
    EXPECT_STREQ(wizard_settings.primary_domain, fifty_characters);
}

// What is no character could be an order to the terminal, or begin another command to the server.
TEST(DomainDefault, is_localdomain_where_the_host_has_none_that_can_be_offered) {
    std::vector<std::string> domains = {"", "(none)"};
    for (const size_t length : {51, 200, 201, 250}) domains.emplace_back(length, 'a');
    for (const char* other :
         {"\x01", "\t", "\n", "\r", "\x1b[2J", "\x1f", "\x7f", "\x80", "\xc3\xa4", "\xff"})
        domains.push_back(std::string("example") + other + ".com");
    for (const std::string& domain : domains) {
        DomainRig wizard(domain);
        wizard.play({});
        wizard.expectShown("localdomain", "/var/opt/teluma/domains/localdomain/");
    }
}

struct Refusal {
    std::string domain;
    std::string location;
    std::string message;
    Position cursor;  // after the error
};

TEST(DomainScreen, refuses_an_empty_domain_then_location_then_password) {
    const Refusal refusals[] = {{"", "", "A blank domain is not allowed!", {7, 27}},
                                {"a.b", "", "A blank domain location is not allowed!", {9, 28}},
                                {"a.b", "/c", "A blank password is not allowed!", {11, 40}}};
    for (const Refusal& refusal : refusals) {
        DomainRig wizard;
        wizard.play({retyped(refusal.domain), "\t", retyped(refusal.location), "\t\t", Key::enter,
                     [&] { EXPECT_EQ(wizard.words(), "Error! " + refusal.message + " OK "); },
                     Key::enter});
        wizard.expectShown(refusal.domain, refusal.location);
        EXPECT_TRUE(wizard.image().cursor().visible);
        EXPECT_EQ(wizard.image().cursor().position, refusal.cursor);
    }
}

TEST(DomainScreen, has_fields_of_50_252_and_50_characters_of_which_39_38_and_26_are_shown) {
    const std::string domain = fifty_characters;
    const std::string location = "/" + std::string(200, 'L') + fifty_characters + "/";
    DomainRig wizard;
    const auto expect_stars = [&](size_t count) {
        EXPECT_TRUE(wizard.image().shows("password:" + std::string(count, '*') + " "));
    };
    wizard.play({retyped(domain + "x"), "\t", retyped(location + "x"), "\t", domain + "x",
                 [&] {
                     wizard.expectShown(domain.substr(50 - 39), location.substr(252 - 38));
                     expect_stars(26);
                 },
                 std::string(30, '\x7f'), [&] { expect_stars(20); }, domain.substr(20), "\t",
                 Key::enter});
    EXPECT_EQ(wizard_settings.primary_domain, domain);
    EXPECT_EQ(wizard_settings.domain_location, location);
    EXPECT_EQ(wizard_settings.postmaster_password, domain.substr(0, 49));
}

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
    EXPECT_EQ(screen_focus(state_aliases), 1) << "where a step that fails leads back to";
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
    RigSetup setup{smallest};
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
            EXPECT_TRUE(apply_double.shows_nothing);
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
