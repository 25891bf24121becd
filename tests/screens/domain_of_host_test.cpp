// The domain that a real host says it is in.

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "tests/screens/domain_rig.h"
#include "tests/support/descriptor.h"
#include "wizard/base/wizard_settings.h"

namespace {

/// What the screen offers on a host of that NIS domain.
std::string domain_offered(const std::string& host_domain) {
    checked(setdomainname(host_domain.data(), host_domain.size()), "setdomainname");
    DomainRig wizard;
    wizard.play({});
    return wizard.domainShown() + " in " + wizard.locationShown();
}

/// The same for a domain that is short enough to be seen whole with its directory.
std::string shown(const std::string& domain) {
    return domain + " in /var/opt/teluma/domains/" + domain + "/";
}

const std::string localdomain = shown("localdomain");

TEST(DomainOfHost, is_offered_with_its_directory) {
    EXPECT_EQ(domain_offered("example.com"), shown("example.com"));
}

TEST(DomainOfHost, that_is_empty_or_none_makes_it_localdomain) {
    EXPECT_EQ(domain_offered(""), localdomain);
    EXPECT_EQ(domain_offered("(none)"), localdomain);
}

TEST(DomainOfHost, that_fills_the_field_is_offered_whole_and_a_longer_one_is_not) {
    const std::string longest = std::string(46, 'a') + ".org";
    EXPECT_EQ(domain_offered(longest + "a"), localdomain);
    checked(setdomainname(longest.data(), longest.size()), "setdomainname");
    DomainRig wizard;
    wizard.play({"\t\tpw\t", Key::enter});
    EXPECT_EQ(wizard_settings.primary_domain, longest);
}

// A network may have set it. What is no character could be an order to the terminal, or begin
// another command to the server.
TEST(DomainOfHost, that_holds_anything_but_printable_ascii_is_not_offered) {
    EXPECT_EQ(domain_offered("!example~"), shown("!example~"));
    for (const char* other :
         {"\x01", "\t", "\n", "\r", "\x1b[2J", "\x1f", "\x7f", "\x80", "\xc3\xa4", "\xff"})
        EXPECT_EQ(domain_offered(std::string("example") + other + ".com"), localdomain);
}

}  // namespace
