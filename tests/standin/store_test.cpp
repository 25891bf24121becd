#include "standin/store.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "tests/support/files.h"

namespace {

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
    EXPECT_EQ(smtp.listeners, (std::vector<std::string>{"0.0.0.0:25", "127.0.0.1:2525"}));
    EXPECT_TRUE(smtp.enabled);
    EXPECT_FALSE(state.listener_services["pop3"].enabled);
    EXPECT_EQ(smtp.certfile, "/etc/a file.pem");
    EXPECT_EQ(state.domains["example.com"].location, "/var/domains/");
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
    EXPECT_EQ(store.live.primary_domain, "first");
    store.live.primary_domain = "saved";
    EXPECT_TRUE(store.save());
    Store restarted(paths);
    EXPECT_EQ(restarted.load(first), "");
    EXPECT_EQ(restarted.live.primary_domain, "saved");
}

TEST_F(StoreTest, SaysWhatIsWrongWithASavedState) {
    write_file(paths.state, "nonsense\n");
    EXPECT_EQ(Store(paths).load(empty_state()), paths.state + ": line 1 is no record: nonsense");
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
