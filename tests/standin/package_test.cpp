// The files that belong to the server, and their installation.
#include "standin/text.h"
#include "tests/standin/daemon_fixture.h"

namespace {

class PackageTest : public DaemonTest {
  protected:
    std::string root = directory / "host";
    std::string runDirectory = root + "/var/opt/teluma/run";

    CommandResult install() const { return run_command({STANDIN_PACKAGE "/install", root}); }
};

TEST_F(PackageTest, IsInstalledAtThePathsOfALinuxHostAndRuns) {
    EXPECT_EQ(install().status, exited(0));
    for (const char* program : {"/opt/teluma/bin/teluma", "/opt/teluma/bin/sendmail"})
        EXPECT_EQ(file_facts(root + program).mode, 0755U) << program;
    for (const char* file :
         {"/opt/teluma/share/doc/README", "/opt/teluma/share/doc/REMOVE-OTHERS.txt",
          "/var/opt/teluma/run/smtp.filters"})
        EXPECT_GT(file_facts(root + file).size, 0) << file;
    EXPECT_TRUE(file_facts(root + "/var/opt/teluma/domains").is_directory);

    paths = RunPaths{runDirectory};
    const CommandResult result = run_command({root + "/opt/teluma/bin/teluma", "-r", runDirectory});
    EXPECT_EQ(result.status, exited(0)) << result.err;
    EXPECT_TRUE(exists(paths.pid));
    EXPECT_EQ(stop(), exited(0));
}

TEST_F(PackageTest, InstallingAgainLeavesTheServersStateAlone) {
    install();
    write_file(runDirectory + "/teluma.state", "primarydomain example.com\n");
    write_file(runDirectory + "/teluma.cfg", "broken\n");
    EXPECT_EQ(install().status, exited(0));
    EXPECT_EQ(read_file(runDirectory + "/teluma.state"), "primarydomain example.com\n");
    EXPECT_EQ(read_file(runDirectory + "/teluma.cfg"), read_file(STANDIN_PACKAGE "/teluma.cfg"));
}

TEST_F(PackageTest, InstallingWithoutAServerBesideSaysSo) {
    write_file(directory / "install", read_file(STANDIN_PACKAGE "/install"), 0755);
    const CommandResult result = run_command({directory / "install", root});
    EXPECT_EQ(result.status, exited(1));
    EXPECT_NE(result.err.find("there is no server in"), std::string::npos) << result.err;
    EXPECT_FALSE(exists(root));
}

TEST_F(PackageTest, HasAFiltersScriptWithOneEventAndAWrapperThatTakesNoMail) {
    const std::string filters = read_file(STANDIN_PACKAGE "/smtp.filters");
    EXPECT_NE(filters.find("\nevent onEhlo {\n"), std::string::npos);
    EXPECT_EQ(filters.find("event onEhlo"), filters.rfind("event onEhlo"));
    EXPECT_EQ(lines_of(filters).back()[0], '#') << "which may be doubled without harm";

    const CommandResult result = run_command({STANDIN_PACKAGE "/sendmail", "-t"});
    EXPECT_EQ(result.status, exited(69));
    EXPECT_EQ(result.err, "sendmail: the stand-in server takes no mail\n");
}

}  // namespace
