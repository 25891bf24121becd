#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "tests/support/case_name.h"
#include "tests/wizard/fake_interfaces.h"
#include "tests/wizard/replaced_calls.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/install_profile.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/ending.h"

namespace {

class Summary : public testing::Test {
  protected:
    Summary() {
        fake_interfaces({{"lo", "127.0.0.1", "255.0.0.0"},
                         {"eth0", "192.168.7.2", "255.255.255.0"},
                         {"eth1", "10.20.0.5", "255.0.0.0"}});
        discover_networks();
        select_install_profile();
        form_document_paths();
        std::snprintf(wizard_settings.primary_domain, sizeof wizard_settings.primary_domain,
                      "example.com");
    }
    ~Summary() override {
        wizard_settings = {};
        release_networks();
        host_facts = {};
        replaced_calls = {};
    }

    static std::string printed() {
        testing::internal::CaptureStdout();
        print_summary();
        std::fflush(stdout);
        return testing::internal::GetCapturedStdout();
    }

    // What stands above the URLs.
    const std::string introduction =
        "\nYour first installation steps are now completed. You have created the\n"
        "domain named 'example.com' within TELUMA.\n"
        "To manage/configure TELUMA, first you must start its service (read the\n"
        "/opt/teluma/share/doc/README file on how to start the TELUMA service),\n"
        "and then login using the 'admin' username and the password you have\n"
        "previously set, by accessing one of the following URLs:\n";
};

struct Choice {
    const char* name;
    int webadmin_interface;
    int webadmin_port;
    const char* urls;
};

// A line for each interface and then an empty one, or the one line. The port of HTTPS makes no
// difference.
const Choice choices[] = {
    {"all", 0, 9000,
     "\thttp://127.0.0.1:9000\n\thttp://192.168.7.2:9000\n\thttp://10.20.0.5:9000\n\n"},
    {"one", 2, 65535, "\thttp://192.168.7.2:65535\n"},
    {"the_last", 3, 443, "\thttp://10.20.0.5:443\n"},
};

class SummaryOf : public Summary, public testing::WithParamInterface<Choice> {};

TEST_P(SummaryOf, tells_where_to_log_in) {
    wizard_settings.webadmin_interface = GetParam().webadmin_interface;
    wizard_settings.webadmin_port = GetParam().webadmin_port;
    EXPECT_EQ(printed(), introduction + GetParam().urls);
}

INSTANTIATE_TEST_SUITE_P(Interfaces, SummaryOf, testing::ValuesIn(choices), CaseName());

TEST_F(Summary, has_no_url_where_no_interface_is_known) {
    release_networks();
    fake_failing_interface_list();
    discover_networks();
    EXPECT_EQ(printed(), introduction + "\n");
}

TEST_F(Summary, names_a_domain_of_the_greatest_length_whole) {
    const std::string domain(750, 'd');
    std::snprintf(wizard_settings.primary_domain, sizeof wizard_settings.primary_domain, "%s",
                  domain.c_str());
    EXPECT_NE(printed().find("\ndomain named '" + domain + "' within TELUMA.\n"),
              std::string::npos);
}

}  // namespace
