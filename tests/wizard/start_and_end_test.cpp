// What stands around the screens: the descriptors at the start, the words at the end.

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "apply/server_session.h"
#include "tests/support/descriptor.h"
#include "tests/wizard/fake_host.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/ending.h"
#include "wizard/start_up.h"
#include "wizard/system/signal_gate.h"

namespace {

std::string printed_by(const std::function<void()>& work) {
    testing::internal::CaptureStdout();
    work();
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

class Summary : public testing::Test {
  protected:
    Summary() { domain.copy(wizard_settings.primary_domain, domain.size()); }
    ~Summary() override {
        wizard_settings = {};
        release_networks();
        host_facts = {};
        fake_host = {};
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
    fake_host.interfaces = {{"lo", "127.0.0.1", "255.0.0.0"},
                            {"eth0", "192.168.7.2", "255.255.255.0"}};
    discover_host();
    EXPECT_EQ(printed(0, 9000),
              introduction + "\thttp://127.0.0.1:9000\n\thttp://192.168.7.2:9000\n\n");
    EXPECT_EQ(printed(1, 65535), introduction + "\thttp://127.0.0.1:65535\n");
    EXPECT_EQ(printed(2, 443), introduction + "\thttp://192.168.7.2:443\n") << "the port of HTTPS";
}

TEST_F(Summary, is_printed_after_a_completed_run_without_urls_where_no_interface_is_known) {
    fake_host.interface_list_fails = true;
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
    // The server, here the wizard itself, is stopped before a word is said.
    const auto abort_with_server = [] {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        restore_signals_in_child();
        signal(SIGTERM, [](int) { dprintf(STDERR_FILENO, "stopped"); });
        server_session.pid = getpid();
        abort_wizard(SIGINT);
    };
    EXPECT_EXIT(abort_with_server(), testing::ExitedWithCode(1),
                "^stopped\nTELUMA Configuration Wizard Aborted!\n");
}

TEST(Superuser, is_the_user_0_in_the_group_0_and_another_user_is_not_asked_for_a_group) {
    for (const auto& [user, group, asked] : {std::tuple{0U, 0U, 1}, {0U, 5U, 1}, {5U, 0U, 0}}) {
        fake_host = {};
        fake_host.user = user;
        fake_host.group = group;
        EXPECT_EQ(is_superuser(), user + group == 0);
        EXPECT_EQ(fake_host.asked_for_group, asked);
    }
    fake_host = {};
}

// What a descriptor of this process is open on; empty where it is closed.
std::string file_of(int descriptor) {
    std::error_code closed;
    return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), closed);
}

// For a process that ends: status 0 if, with these descriptors closed, the three standard ones are
// open afterwards, on what they were or else on /dev/null, and no other one besides.
[[noreturn]] void fill_those_closed(const std::vector<int>& closed) {
    std::string expected[] = {file_of(0), file_of(1), file_of(2)};
    const long before = open_descriptors();
    for (const int descriptor : closed) {
        close(descriptor);
        expected[descriptor] = "/dev/null";
    }
    fill_standard_descriptors();
    bool as_expected = open_descriptors() == before;
    for (int descriptor = 0; descriptor <= 2; ++descriptor)
        as_expected = as_expected && file_of(descriptor) == expected[descriptor];
    _exit(as_expected ? 0 : 1);
}

TEST(StandardDescriptors, that_are_closed_are_opened_on_the_null_device) {
    for (const std::vector<int>& closed : std::vector<std::vector<int>>{{}, {2}, {0, 2}, {0, 1, 2}})
        EXPECT_EXIT(fill_those_closed(closed), testing::ExitedWithCode(0), "");
}

}  // namespace
