#include "wizard/ending.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <functional>
#include <string>

#include "tests/wizard/fake_interfaces.h"
#include "tests/wizard/replaced_calls.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/wizard_settings.h"

namespace {

std::string printed_by(const std::function<void()>& work) {
    testing::internal::CaptureStdout();
    work();
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

class Summary : public testing::Test {
  protected:
    Summary() {
        domain.copy(wizard_settings.primary_domain, sizeof wizard_settings.primary_domain - 1);
    }
    ~Summary() override {
        wizard_settings = {};
        release_networks();
        host_facts = {};
        replaced_calls = {};
    }

    static std::string printed(int interface, int port) {
        wizard_settings.webadmin_interface = interface;
        wizard_settings.webadmin_port = port;
        return printed_by(print_summary);
    }

    const std::string domain = std::string(738, 'd') + ".example.com";

    // What stands above the URLs.
    const std::string introduction =
        "\nYour first installation steps are now completed. You have created the\n"
        "domain named '" +
        domain +
        "' within TELUMA.\n"
        "To manage/configure TELUMA, first you must start its service (read the\n"
        "/opt/teluma/share/doc/README file on how to start the TELUMA service),\n"
        "and then login using the 'admin' username and the password you have\n"
        "previously set, by accessing one of the following URLs:\n";
};

TEST_F(Summary, has_each_interface_on_a_line_and_then_an_empty_one_or_the_one_that_was_chosen) {
    fake_interfaces({{"lo", "127.0.0.1", "255.0.0.0"}, {"eth0", "192.168.7.2", "255.255.255.0"}});
    discover_host();
    EXPECT_EQ(printed(0, 9000),
              introduction + "\thttp://127.0.0.1:9000\n\thttp://192.168.7.2:9000\n\n");
    EXPECT_EQ(printed(1, 65535), introduction + "\thttp://127.0.0.1:65535\n");
    EXPECT_EQ(printed(2, 443), introduction + "\thttp://192.168.7.2:443\n") << "the port of HTTPS";
}

TEST_F(Summary, is_printed_after_a_completed_run_without_urls_where_no_interface_is_known) {
    fake_failing_interface_list();
    discover_host();
    EXPECT_EQ(printed_by([] { EXPECT_EQ(end_wizard(WizardEnd::completed), 0); }),
              introduction + "\n");
    EXPECT_EQ(interface_table, nullptr) << "everything is released";
}

TEST(Ending, of_any_other_kind_has_its_own_words_and_status) {
    EXPECT_EQ(printed_by([] { EXPECT_EQ(end_wizard(WizardEnd::left), 0); }),
              "\nTELUMA Configuration Wizard Aborted!\n");
    EXPECT_EQ(printed_by([] { EXPECT_EQ(end_wizard(WizardEnd::without_login), 1); }), "");
    EXPECT_EQ(printed_by([] { EXPECT_EQ(refuse_terminal(), 0); }),
              "Please enlarge your window so it will have at least 72 columns and 20 lines!\n");
    EXPECT_EXIT((dup2(STDERR_FILENO, STDOUT_FILENO), abort_wizard(SIGINT)),
                testing::ExitedWithCode(1), "\nTELUMA Configuration Wizard Aborted!\n");
}

}  // namespace
