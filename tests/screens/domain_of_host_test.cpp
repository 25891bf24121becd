// The domain that a real host says it is in.

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "tests/screens/domain_rig.h"
#include "tests/support/descriptor.h"
#include "wizard/wizard_settings.h"

namespace {

/// What the screen offers on a host of that NIS domain.
std::string domain_offered(const std::string& host_domain) {
    checked(setdomainname(host_domain.data(), host_domain.size()), "setdomainname");
    DomainRig wizard;
    wizard.play({});
    return wizard.domainShown() + " in " + wizard.locationShown();
}

TEST(DomainOfHost, is_offered_with_its_directory) {
    EXPECT_EQ(domain_offered("example.com"), "example.com in /var/opt/teluma/domains/example.com/");
}

TEST(DomainOfHost, that_is_empty_or_none_makes_it_localdomain) {
    const std::string localdomain = "localdomain in /var/opt/teluma/domains/localdomain/";
    EXPECT_EQ(domain_offered(""), localdomain);
    EXPECT_EQ(domain_offered("(none)"), localdomain);
}

TEST(DomainOfHost, that_is_as_long_as_the_kernel_allows_is_offered_whole) {
    const std::string longest = std::string(60, 'a') + ".org";
    checked(setdomainname(longest.data(), longest.size()), "setdomainname");
    DomainRig wizard;
    wizard.play({"\t\tpw\t", Key::enter});
    EXPECT_EQ(wizard_settings.primary_domain, longest);
}

}  // namespace
