// What is particular about the domain screen; its answers are the walk model's.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>

#include "tests/screens/screen_facts.h"

/// What the host says its NIS domain is.
static std::string host_domain = "(none)";

// In the place of the C library's.
int getdomainname(char* name, size_t size) noexcept {
    std::strncpy(name, host_domain.c_str(), size);
    return 0;
}

namespace {

/// The wizard on its domain screen, on a host of that domain.
class DomainRig : public WizardRig {
  public:
    explicit DomainRig(const std::string& domain = "(none)")
        : WizardRig((host_domain = domain, state_domain)) {}

    /// What a field shows.
    std::string shown(int row, int col) {
        std::string text = image().region(4 + row, 10 + col, 1, 59 - col).rowText(0);
        return text.erase(text.find_last_not_of(' ') + 1);
    }
    std::string domainShown() { return shown(3, 17); }
    std::string locationShown() { return shown(5, 18); }
    std::string postmasterShown() { return shown(7, 30); }
};

TEST(DomainDefault, is_that_of_the_host_with_its_directory) {
    for (const char* domain : {"example.org", "(none).org", "!example~"}) {
        DomainRig wizard(domain);
        wizard.play({});
        EXPECT_EQ(wizard.domainShown(), domain);
        EXPECT_EQ(wizard.locationShown(), std::string("/var/opt/teluma/domains/") + domain + "/");
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
        EXPECT_EQ(wizard.domainShown(), "localdomain") << domain;
        EXPECT_EQ(wizard.locationShown(), "/var/opt/teluma/domains/localdomain/");
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
        wizard.play(
            {retyped(refusal.domain), "\t", retyped(refusal.location), "\t\t", Key::enter,
             [&] { expect_error_box(wizard.image(), refusal.message, "Domain configuration"); },
             Key::enter});
        EXPECT_EQ(wizard.domainShown(), refusal.domain);
        EXPECT_EQ(wizard.locationShown(), refusal.location);
        EXPECT_TRUE(wizard.image().cursor().visible);
        EXPECT_EQ(wizard.image().cursor().position, refusal.cursor);
    }
}

TEST(DomainScreen, has_fields_of_50_252_and_50_characters_of_which_39_38_and_26_are_shown) {
    const std::string domain = fifty_characters;
    const std::string location = "/" + std::string(200, 'L') + fifty_characters + "/";
    DomainRig wizard;
    wizard.play({retyped(domain + "x"), "\t", retyped(location + "x"), "\t", domain + "x",
                 [&] {
                     EXPECT_EQ(wizard.domainShown(), domain.substr(50 - 39));
                     EXPECT_EQ(wizard.locationShown(), location.substr(252 - 38));
                     EXPECT_EQ(wizard.postmasterShown(), std::string(26, '*'));
                 },
                 "\t", Key::enter});
    EXPECT_EQ(wizard_settings.primary_domain, domain);
    EXPECT_EQ(wizard_settings.domain_location, location);
    EXPECT_EQ(wizard_settings.postmaster_password, domain.substr(0, 49));
}

TEST(DomainScreen, takes_50_characters_of_a_password_and_not_51_and_shows_none) {
    DomainRig wizard;
    // Of 50 characters 20 are left; of 51 it would be 21.
    wizard.play({"\t\t", std::string(51, '7'), std::string(30, '\x7f')});
    EXPECT_EQ(wizard.postmasterShown(), std::string(20, '*'));
    EXPECT_FALSE(wizard.image().shows("7"));
}

}  // namespace
