// The package for systems with rpm, looked at and unpacked by rpm's own tools.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "tests/support/process.h"
#include "tests/support/terminal_program.h"

namespace {

std::string package() {
    for (const auto& entry : std::filesystem::directory_iterator(PACKAGES "/one/release")) {
        if (entry.path().extension() == ".rpm") return entry.path();
    }
    return "no package";
}

std::string ask(const std::vector<std::string>& question) {
    std::vector<std::string> words = {"rpm", "--query", "--package", package()};
    words.insert(words.end(), question.begin(), question.end());
    const CommandResult result = run_command(words, {{"PATH", "/usr/bin:/bin"}});
    EXPECT_EQ(result.status, exited(0)) << result.err;
    return result.out;
}

TEST(RpmPackage, holds_the_program_its_page_and_its_licence_all_of_them_roots) {
    EXPECT_EQ(ask({"--queryformat",
                   "[%{FILEMODES:perms} %{FILEUSERNAME}:%{FILEGROUPNAME} %{FILENAMES}\n]"}),
              R"(-rwxr-xr-x root:root /opt/teluma/bin/teluma-wizard
-rw-r--r-- root:root /opt/teluma/share/man/man8/teluma-wizard.8.gz
lrwxrwxrwx root:root /usr/sbin/teluma-wizard
drwxr-xr-x root:root /usr/share/licenses/teluma-wizard
-rw-r--r-- root:root /usr/share/licenses/teluma-wizard/LICENSE
lrwxrwxrwx root:root /usr/share/man/man8/teluma-wizard.8.gz
)");
}

TEST(RpmPackage, has_no_configuration_and_runs_nothing_when_it_is_installed) {
    EXPECT_EQ(ask({"--configfiles"}), "");
    EXPECT_EQ(ask({"--scripts", "--triggers"}), "");
}

TEST(RpmPackage, requires_curses_and_the_c_library_alone) {
    const std::regex known(
        R"((ld-linux[^(]*|libc|libncursesw|libpanelw|libtinfo|rtld|rpmlib)[.(].*|config.*)");
    std::istringstream requirements(ask({"--requires"}));
    std::string line;
    bool needs_curses = false;
    while (std::getline(requirements, line)) {
        EXPECT_TRUE(std::regex_match(line, known)) << line;
        needs_curses = needs_curses || line.find("libncursesw") == 0;
    }
    EXPECT_TRUE(needs_curses);
}

TEST(RpmPackage, holds_a_wizard_that_runs) {
    const CommandResult extraction = run_command(
        {"sh", "-c", "mkdir tree && cd tree && rpm2cpio " + package() + " | cpio --quiet -id"},
        {{"PATH", "/usr/bin:/bin"}});
    ASSERT_EQ(extraction.status, exited(0)) << extraction.err;
    TerminalProgram wizard(ProgramSetup{{"tree/opt/teluma/bin/teluma-wizard"}});
    wizard.waitForText("Please enter admin's password");
    wizard.press(Key::ctrl_c);
    EXPECT_EQ(wizard.waitExit(), exited(1));
}

}  // namespace
