#include "wizard/summary.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "tests/wizard/fake_interfaces.h"
#include "tests/wizard/replaced_calls.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/install_profile.h"
#include "wizard/base/wizard_settings.h"

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
        wizard_settings.webadmin_port = 9000;
    }
    ~Summary() override {
        wizard_settings = WizardSettings{};
        release_networks();
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

TEST_F(Summary, names_each_interface_on_a_line_and_then_a_blank_line_when_all_were_chosen) {
    EXPECT_EQ(printed(), introduction +
                             "\thttp://127.0.0.1:9000\n"
                             "\thttp://192.168.7.2:9000\n"
                             "\thttp://10.20.0.5:9000\n"
                             "\n");
}

TEST_F(Summary, names_the_one_interface_that_was_chosen_and_no_blank_line) {
    wizard_settings.webadmin_interface = 2;
    EXPECT_EQ(printed(), introduction + "\thttp://192.168.7.2:9000\n");
}

TEST_F(Summary, names_the_port_that_was_chosen) {
    wizard_settings.webadmin_interface = 3;
    wizard_settings.webadmin_port = 65535;
    EXPECT_EQ(printed(), introduction + "\thttp://10.20.0.5:65535\n");
}

TEST_F(Summary, the_scheme_is_http_on_the_port_of_https_too) {
    wizard_settings.webadmin_interface = 1;
    wizard_settings.webadmin_port = 443;
    EXPECT_EQ(printed(), introduction + "\thttp://127.0.0.1:443\n");
}

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
