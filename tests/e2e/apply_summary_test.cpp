// The URLs of the summary.

#include <gtest/gtest.h>

#include "tests/e2e/apply_test.h"
#include "tests/support/process.h"

namespace {

/// What the summary prints behind its text.
std::string urls_of(WizardRun& wizard) {
    const std::string text = wizard.printedAfterwards();
    const std::string last_line = "by accessing one of the following URLs:\n";
    const size_t at = text.find(last_line);
    return at == std::string::npos ? "no summary: " + text : text.substr(at + last_line.size());
}

class ApplySummary : public ApplyTest {
  protected:
    ApplySummary() { askForLittle(); }
};

TEST_F(ApplySummary, lists_every_interface_and_an_empty_line_when_all_are_selected) {
    runThrough();
    EXPECT_EQ(urls_of(wizard),
              "\thttp://127.0.0.1:9000\n"
              "\thttp://192.168.7.2:9000\n"
              "\thttp://10.20.0.5:9000\n"
              "\n");
}

TEST_F(ApplySummary, lists_one_url_and_no_empty_line_when_one_interface_is_selected) {
    answers.webadmin = {2, "9443"};
    runThrough();
    EXPECT_EQ(urls_of(wizard), "\thttp://192.168.7.2:9443\n");
}

TEST_F(ApplySummary, lists_the_loopback_url_when_that_is_selected) {
    answers.webadmin = {1, "", true};
    runThrough();
    EXPECT_EQ(urls_of(wizard), "\thttp://127.0.0.1:9000\n");
}

TEST_F(ApplySummary, names_the_domain_that_was_typed) {
    answers.domain = "example.test";
    runThrough();
    EXPECT_NE(wizard.printedAfterwards().find("domain named 'example.test' within TELUMA.\n"),
              std::string::npos);
}

TEST(ApplySummaryOfOneInterface, lists_its_url_and_an_empty_line) {
    for (const char* interface : {"eth0", "eth1"})
        ASSERT_EQ(run_command({"ip", "link", "del", interface}).status, exited(0));
    WizardRun wizard;
    wizard.walkToTheEnd();
    ASSERT_EQ(wizard.finish(), exited(0));
    EXPECT_EQ(urls_of(wizard),
              "\thttp://127.0.0.1:9000\n"
              "\n");
}

}  // namespace
