// A server that never comes to an end: the wizard stays as small as it was, Ctrl-C ends it, and
// nothing of what it is told reaches the screen.

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <sstream>
#include <string>

#include "tests/e2e/endings.h"
#include "tests/e2e/fake_server.h"
#include "tests/e2e/places.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/wait_until.h"

namespace {

class Endless : public testing::TestWithParam<EndlessReply> {
  protected:
    Endless() { decoy.replace(server); }

    // The number after a name in a file of the wizard's in /proc, as "VmRSS:" in its status.
    long fact(const std::string& file, const std::string& name) const {
        std::istringstream words(read_file("/proc/" + std::to_string(wizard.pid()) + "/" + file));
        std::string word;
        while (words >> word && word != name) continue;
        long number = 0;
        words >> number;
        return number;
    }

    void waitUntilRead(long bytes) const {
        const long before = fact("io", "rchar:");
        wait_until([&] { return fact("io", "rchar:") - before > bytes; }, "the wizard had read on");
    }

    InstalledServer server;
    Decoy decoy;
    const FakeServer peer{0, AF_INET, GetParam()};
    // With an address sanitizer that gives back at once what was freed.
    WizardRun wizard{{{"sh", "-c",
                       "ASAN_OPTIONS=$ASAN_OPTIONS:quarantine_size_mb=0:"
                       "thread_local_quarantine_size_kb=0 exec " WIZARD_PROGRAM}}};
};

TEST_P(Endless, talk_makes_the_wizard_no_larger_and_is_ended_by_ctrl_c) {
    // A line is a few bytes; one that was kept would take 16 at least.
    constexpr long bytes = 300000;
    constexpr long most_kilobytes = 1000;
    wizard.walkToTheEnd();
    wizard.waitForText("Operations pending");
    waitUntilRead(bytes);
    const long before = fact("status", "VmRSS:");
    waitUntilRead(bytes);
    EXPECT_LT(fact("status", "VmRSS:") - before, most_kilobytes);
    EXPECT_TRUE(wizard.image().shows("Operations pending"));
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
    EXPECT_EQ(wizard.output().find(GetParam().repeated), std::string::npos);
    decoy.waitForSignals(1);
}

const EndlessReply endless_replies[] = {
    {"of_lines_in_the_greeting", "", "", "g\r\n"},
    {"of_lines_in_a_reply", "create domain", "", "l\r\n"},
    {"of_escape_sequences", "create domain", "", "\x1b[2J\x1b[31m\r\n"},
    {"of_rows_in_a_listener_table", "list listeners", "-----\r\n", "1|\r\n"},
    {"of_services", "show attr services", "", "services\r\n"},
    {"of_bytes_that_make_no_line", "create domain", "", "\r\r"},
};

INSTANTIATE_TEST_SUITE_P(Server, Endless, testing::ValuesIn(endless_replies), CaseName());

}  // namespace
