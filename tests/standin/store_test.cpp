// The files that the server reads and keeps.
#include "standin/store.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "standin/config_file.h"
#include "standin/text.h"
#include "tests/support/files.h"

namespace {

using Words = std::vector<std::string>;

TEST(ConfigFile, TheSampleNamesItsServicesListenersAndFiltersScript) {
    const std::string sample = read_file(STANDIN_PACKAGE "/teluma.cfg");
    const Config config = parse_config(sample);
    EXPECT_EQ(config.state.services,
              (Words{"smtpIncoming", "smtpOutgoing", "processing", "webadmin"}));
    EXPECT_EQ(config.cli_address, "127.0.0.1:9091");
    EXPECT_EQ(config.smtp_filters, "/var/opt/teluma/run/smtp.filters");
    const auto& services = config.state.listener_services;
    EXPECT_EQ(services.at("smtp-incoming").listeners, Words{"127.0.0.1:25"});
    EXPECT_TRUE(services.at("smtp-incoming").enabled);
    EXPECT_FALSE(services.at("pop3").enabled);
    EXPECT_EQ(lines_of(sample).back(), "}") << "may be doubled without harm";
}

TEST(ConfigFile, FindsTheListenersOfTheCliHoweverTheFileIsWritten) {
    const std::string cli = "cli = {\nlisteners = (\n{\naddress = 127.0.0.1:1\n}\n";
    const std::pair<std::string, Words> cases[] = {
        {"c\tli={\nlist eners =(\n addr ess\t = \t127.0.0.1:1 \r\n", {"127.0.0.1:1"}},
        {"cli = {\nlisteners = (\n#address = 0.0.0.0:1\naddress = 127.0.0.1:2 # ours\n",
         {"127.0.0.1:2"}},
        {cli + "{\naddress = 127.0.0.1:2\n}\n)\n}\n", {"127.0.0.1:1", "127.0.0.1:2"}},
        {cli + ")\n}\n}\n", {"127.0.0.1:1"}},
        {"}\n)\n" + cli, {"127.0.0.1:1"}},
        {"other = {\naddress = 127.0.0.1:1\nenable = yes\n}\nunknown = 1\nnonsense\n", {}},
    };
    for (const auto& [text, addresses] : cases) {
        const Config config = parse_config(text);
        EXPECT_EQ(config.state.listener_services.at("cli").listeners, addresses) << text;
        EXPECT_EQ(config.cli_address, addresses.empty() ? "" : addresses[0]) << text;
    }
}

TEST(ConfigFile, ReadsTheServicesBetweenBracketsAndTheScriptWithOrWithoutQuotes) {
    EXPECT_EQ(parse_config("ser vices\t=  (  webadmin\tcli )\r\n").state.services,
              (Words{"webadmin", "cli"}));
    EXPECT_EQ(parse_config("services = webadmin\n").state.services, Words());
    EXPECT_EQ(parse_config("smtpFiltersFile = \"/a b/\"c\"\"\n").smtp_filters, "/a b/\"c\"");
    EXPECT_EQ(parse_config("smtpFiltersFile = /a\n").smtp_filters, "/a");
}

TEST(ReplaceFile, ReplacesItWholeOrLeavesWhatWasThereAndNothingBeside) {
    const TempDir directory;
    const std::string path = directory / "file";
    write_file(directory / "precious", "precious");
    ASSERT_EQ(symlink((directory / "precious").c_str(), (directory / "file.new").c_str()), 0);
    EXPECT_TRUE(replace_file(path, "old and long", 0644));
    EXPECT_TRUE(replace_file(path, "new", 0600));
    EXPECT_EQ(read_file(path), "new");
    EXPECT_EQ(file_facts(path).mode, 0600U);
    EXPECT_EQ(read_file(directory / "precious"), "precious") << "a link was followed";

    mkdir((directory / "folder").c_str(), 0700);
    EXPECT_FALSE(replace_file(directory / "folder", "new", 0600));
    EXPECT_EQ(errno, EISDIR);
    EXPECT_FALSE(exists(directory / "folder.new"));
    std::string text;
    EXPECT_FALSE(read_all(directory / "none", text));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(read_all(directory.path(), text)) << "a directory";
}

const char* const full_text =
    "services smtpIncoming cli\n"
    "primarydomain example.com\n"
    "listener smtp-incoming 0.0.0.0:25\n"
    "listener smtp-incoming 127.0.0.1:2525\n"
    "enable smtp-incoming yes\n"
    "certfile smtp-incoming /etc/a file.pem\n"
    "domain example.com /var/domains/ two  words\n"
    "domainalias example.com localhost\n"
    "domainalias example.com localhost.localdomain\n"
    "account example.com postmaster\n"
    "accountalias example.com postmaster root\n"
    "accountalias example.com postmaster admin\n"
    "domain example.org /srv/ x\n"
    "account example.org postmaster\n";

TEST(StateFile, HoldsEverythingAsLinesOfText) {
    State state;
    EXPECT_EQ(state_from_text(full_text, state), "");
    const Service& smtp = state.listener_services["smtp-incoming"];
    EXPECT_EQ(smtp.listeners, (Words{"0.0.0.0:25", "127.0.0.1:2525"}));
    EXPECT_EQ(smtp.certfile, "/etc/a file.pem");
    EXPECT_EQ(state.domains["example.com"].postmaster_password, "two  words");
    EXPECT_EQ(state_to_text(state), full_text);
    EXPECT_EQ(state_from_text("\n", state), "");
    EXPECT_EQ(state_to_text(state), "");
}

TEST(StateFile, ALineThatIsNoRecordOrStandsTwiceIsNamed) {
    for (const std::string line :
         {"nonsense", "services", "listener pop3", "listener smtp 1.2.3.4:5", "enable x yes",
          "certfile x y", "domain a b", "domainalias a b", "account a b", "accountalias a b c",
          "domain twice d e", "account twice p"}) {
        State state;
        EXPECT_EQ(state_from_text("domain twice b c\naccount twice p\n" + line + "\n", state),
                  "line 3 is no record: " + line);
    }
}

class StoreTest : public testing::Test {
  protected:
    TempDir directory;
    RunPaths paths{directory.path()};
};

TEST_F(StoreTest, TakesTheSavedStateOnceThereIsOne) {
    State first = empty_state();
    first.primary_domain = "first";
    Store store(paths);
    EXPECT_EQ(store.load(first), "");
    store.live.primary_domain = "saved";
    EXPECT_TRUE(store.save());
    Store restarted(paths);
    EXPECT_EQ(restarted.load(first), "");
    EXPECT_EQ(restarted.live.primary_domain, "saved");
    EXPECT_EQ(Store(RunPaths{paths.state}).load(empty_state()),
              paths.state + "/teluma.state: Not a directory");
}

TEST_F(StoreTest, KeepsAPasswordByteForByteForTheOwnerOnlyAndApartFromTheState) {
    const Store store(paths);
    const std::string password = "a \"$x` \\ 'b' \xc3\xa4\n ";
    EXPECT_FALSE(store.isPassword(""));
    EXPECT_TRUE(store.setPassword("another"));
    EXPECT_TRUE(store.setPassword(password));
    EXPECT_FALSE(exists(paths.state));
    EXPECT_TRUE(store.save());
    EXPECT_EQ(read_file(paths.password), password);
    EXPECT_EQ(file_facts(paths.password).mode, 0600U);
    EXPECT_TRUE(store.isPassword(password));
    EXPECT_FALSE(store.isPassword(password + " "));
}

}  // namespace
