// The packages: Debian's, installed beside the server in the sandbox by dpkg itself, and that for
// systems with rpm, looked at and unpacked by rpm's own tools.

#include <gtest/gtest.h>
#include <sys/mount.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <regex>
#include <system_error>

#include "tests/e2e/wizard_run.h"
#include "tests/support/files.h"
#include "tests/support/installed_server.h"
#include "tests/support/process.h"
#include "tests/support/terminal_program.h"

namespace {

constexpr const char* program = "/opt/teluma/bin/teluma-wizard";

std::string package(const char* extension, const std::string& directory = "/one/release") {
    for (const auto& entry : std::filesystem::directory_iterator(PACKAGES + directory)) {
        if (entry.path().extension() == extension) return entry.path();
    }
    return "no package in " + directory;
}

// The host's list of installed packages, without one of them.
std::string status_without(const std::string& name) {
    std::string status = read_file("/var/lib/dpkg/status");
    const size_t begin = status.find("Package: " + name + "\n");
    if (begin == std::string::npos) return status;
    const size_t end = status.find("\n\n", begin);
    return status.substr(0, begin) + (end == std::string::npos ? "" : status.substr(end + 2));
}

void expect_man_page(const std::string& directory) {
    const CommandResult page = run_command({"gzip", "-dc", directory + "/teluma-wizard.8.gz"});
    EXPECT_EQ(page.out, read_file(SOURCES "/docs/teluma-wizard.8"));
}

// A file tree of its own, in which dpkg takes the host's packages for installed. Its /opt is that
// of the sandbox, where the server is.
class FreshTree : public testing::Test {
  protected:
    FreshTree() {
        std::filesystem::create_directories(root + "/opt");
        for (const char* directory : {"info", "updates", "triggers"})
            std::filesystem::create_directories(database + directory);
        // What is not the host's must not be installed: the wizard itself, from an earlier package.
        write_file(database + "status", status_without("teluma-wizard"));
        if (mount("/opt", (root + "/opt").c_str(), nullptr, MS_BIND, nullptr) != 0)
            throw std::system_error(errno, std::generic_category(), "mount");
    }

    CommandResult dpkg(const std::string& action, const std::string& what) {
        return run_command({"dpkg", "--root=" + root, action, what},
                           {{"PATH", "/usr/sbin:/usr/bin:/sbin:/bin"}});
    }

    void install() {
        const CommandResult result = dpkg("--install", package(".deb"));
        ASSERT_EQ(result.status, exited(0)) << result.out << result.err;
    }

    const std::string root = std::filesystem::current_path() / "tree";
    const std::string database = root + "/var/lib/dpkg/";
};

TEST_F(FreshTree, gets_a_wizard_that_configures_the_server_beside_it) {
    install();
    InstalledServer server;
    // The command that root types is a link to where the program is.
    WizardRun wizard({{root + "/usr/sbin/teluma-wizard"}});
    EXPECT_EQ(std::filesystem::canonical("/proc/" + std::to_string(wizard.pid()) + "/exe"),
              program);
    expect_man_page(root + "/usr/share/man/man8");
    Answers answers;
    answers.domain = "example.org";
    wizard.walkToTheEnd(answers);
    EXPECT_EQ(wizard.finish(), exited(0));
    EXPECT_NE(wizard.printedAfterwards().find("\thttp://192.168.7.2:9000\n"), std::string::npos);
    const std::vector<std::string> commands = server.commands();
    EXPECT_NE(std::find(commands.begin(), commands.end(), "set primarydomain example.org"),
              commands.end());
}

TEST_F(FreshTree, keeps_the_server_when_the_wizard_is_removed) {
    install();
    const CommandResult result = dpkg("--remove", "teluma-wizard");
    EXPECT_EQ(result.status, exited(0)) << result.err;
    EXPECT_FALSE(exists(program));
    EXPECT_FALSE(exists(root + "/usr/sbin/teluma-wizard"));
    EXPECT_TRUE(exists(InstalledServer::binary));
}

TEST_F(FreshTree, refuses_the_wizard_where_the_curses_library_is_missing) {
    write_file(database + "status", status_without("libncursesw6"));
    const CommandResult result = dpkg("--install", package(".deb"));
    EXPECT_EQ(result.status, exited(1));
    EXPECT_NE(result.err.find("depends on libncursesw6"), std::string::npos) << result.err;
}

TEST_F(FreshTree, passes_the_test_that_comes_with_the_source_package) {
    install();
    const CommandResult result =
        run_command({SOURCES "/packaging/debian/tests/refuses-other-users"},
                    {{"PATH", "/opt/teluma/bin:/usr/sbin:/usr/bin:/sbin:/bin"}});
    if (result.status == exited(77)) GTEST_SKIP() << "a user namespace without other ids";
    EXPECT_EQ(result.status, exited(0)) << result.out << result.err;
}

// The command and the page are where everybody looks; links would lead to themselves.
TEST(DebianPackage, has_no_links_where_its_prefix_is_that_of_the_system) {
    const CommandResult extraction =
        run_command({"dpkg-deb", "--extract", package(".deb", "/usr"), "tree"});
    ASSERT_EQ(extraction.status, exited(0)) << extraction.err;
    for (const auto& entry : std::filesystem::recursive_directory_iterator("tree"))
        EXPECT_FALSE(entry.is_symlink()) << entry.path();
    expect_man_page("tree/usr/share/man/man8");
}

TEST(DebianPackage, depends_on_curses_and_the_c_library_alone) {
    const CommandResult depends = run_command({"dpkg-deb", "--field", package(".deb"), "Depends"});
    EXPECT_EQ(std::regex_replace(depends.out, std::regex(" [(][^)]*[)]"), ""),
              "libc6, libncursesw6, libtinfo6\n");
}

std::string ask(const std::vector<std::string>& question) {
    std::vector<std::string> words = {"rpm", "--query", "--package", package(".rpm")};
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
        {"sh", "-c",
         "mkdir tree && cd tree && rpm2cpio " + package(".rpm") + " | cpio --quiet -id"},
        {{"PATH", "/usr/bin:/bin"}});
    ASSERT_EQ(extraction.status, exited(0)) << extraction.err;
    TerminalProgram wizard(ProgramSetup{{"tree/opt/teluma/bin/teluma-wizard"}});
    wizard.waitForText("Please enter admin's password");
    wizard.press(Key::ctrl_c);
    EXPECT_EQ(wizard.waitExit(), exited(1));
}

}  // namespace
