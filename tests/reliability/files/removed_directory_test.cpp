// A private directory that somebody removes while the questions are answered, as one who tidies
// /tmp up does.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/e2e/wizard_run.h"
#include "tests/support/files.h"
#include "tests/support/installed_server.h"

namespace {

TEST(RemovedDirectory, is_made_anew_for_the_next_file_and_gone_at_the_end) {
    WizardRun wizard;
    wizard.walk(Stop::password, Stop::sendmail);
    const std::string directory = "/proc/" + std::to_string(wizard.pid()) + "/cwd";
    const std::string removed = link_target(directory);
    ASSERT_NE(removed.find("/teluma-wizard."), std::string::npos);
    std::filesystem::remove(removed);
    wizard.pressNext(Stop::sendmail);
    wizard.waitForText("creating domain");
    const std::string made = link_target(directory);
    EXPECT_EQ(file_facts(made).mode, 0700u);
    EXPECT_EQ(wizard.finish(), exited(0));
    EXPECT_FALSE(exists(made));
    EXPECT_NE(read_file(InstalledServer::config).find(" cli "), std::string::npos);
}

}  // namespace
