// A wizard that was started without all of its standard streams.

#include <gtest/gtest.h>

#include "tests/e2e/wizard_run.h"
#include "tests/support/installed_server.h"

namespace {

TEST(ApplyWithoutStandardError, does_everything_all_the_same) {
    InstalledServer server;
    WizardRun wizard(std::vector<std::string>{"sh", "-c", R"(exec "$0" 2>&-)", WIZARD_PROGRAM});
    wizard.walkToTheEnd();
    EXPECT_EQ(wizard.finish(), exited(0));
    EXPECT_FALSE(server.commands().empty());
}

}  // namespace
