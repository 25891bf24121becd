// Files that may not become as large as those that the wizard rewrites.

#include <gtest/gtest.h>

#include "tests/e2e/endings.h"
#include "tests/e2e/wizard_run.h"
#include "tests/support/files.h"
#include "tests/support/installed_server.h"

namespace {

constexpr const char* limit = "--fsize=100000";

class FileSizeLimit : public testing::Test {
  protected:
    FileSizeLimit() { server.start(); }

    // Makes a file of the server's larger than the limit; returns what it holds then.
    static std::string enlarge(const char* path) {
        std::string content = read_file(path);
        while (content.size() < 200000)
            content += "# padding\n";
        write_file(path, content);
        return content;
    }

    InstalledServer server;
};

TEST_F(FileSizeLimit, below_the_configuration_fails_the_login_and_leaves_the_file_alone) {
    const std::string config = enlarge(InstalledServer::config);
    WizardRun wizard({"prlimit", limit, WIZARD_PROGRAM});
    wizard.walkToTheEnd();
    wizard.dismissError("the CLI port is not in use!");
    EXPECT_TRUE(ends_with(wizard, exited(1), ""));
    EXPECT_EQ(read_file(InstalledServer::config), config);
}

TEST_F(FileSizeLimit, below_the_filters_script_fails_the_relay_and_leaves_the_file_alone) {
    const std::string filters = enlarge(InstalledServer::filters);
    WizardRun wizard({"prlimit", limit, WIZARD_PROGRAM});
    wizard.walkToTheEnd();
    wizard.dismissError("Could not configure relay!");
    wizard.waitForScreen(Stop::relay);
    EXPECT_EQ(read_file(InstalledServer::filters), filters);
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

}  // namespace
