#include "standin/store.h"

#include <gtest/gtest.h>

#include "tests/support/files.h"

namespace standin {
namespace {

class StoreTest : public testing::Test {
  protected:
    TempDir directory;
    RunPaths paths = run_paths(directory.path());

    static State with_primary_domain(const std::string& name) {
        State state = empty_state();
        state.primary_domain = name;
        return state;
    }
};

TEST_F(StoreTest, TakesTheFirstStateWhileNothingHasBeenSaved) {
    Store store(paths);
    EXPECT_EQ(store.load(with_primary_domain("first")), "");
    EXPECT_EQ(store.live.primary_domain, "first");
}

TEST_F(StoreTest, TakesTheSavedStateOnceThereIsOne) {
    Store store(paths);
    store.live = with_primary_domain("saved");
    EXPECT_TRUE(store.save());
    store.live = with_primary_domain("not saved");

    Store restarted(paths);
    EXPECT_EQ(restarted.load(with_primary_domain("first")), "");
    EXPECT_EQ(restarted.live.primary_domain, "saved");
}

TEST_F(StoreTest, SaysWhatIsWrongWithASavedState) {
    ::write_file(paths.state, "nonsense\n");
    EXPECT_EQ(Store(paths).load(empty_state()), paths.state + ": line 1 is no record: nonsense");
    ::write_file(directory / "not-a-directory", "");
    EXPECT_EQ(Store(run_paths(directory / "not-a-directory")).load(empty_state()),
              directory / "not-a-directory/teluma.state: Not a directory");
}

TEST_F(StoreTest, KeepsAPasswordByteForByteAndForTheOwnerOnly) {
    const Store store(paths);
    const std::string password = "a \"$x` \\ 'b' \xc3\xa4\n ";
    EXPECT_TRUE(store.setPassword("another"));
    EXPECT_TRUE(store.setPassword(password));
    EXPECT_EQ(::read_file(paths.password), password);
    EXPECT_EQ(file_facts(paths.password).mode, 0600U);
    EXPECT_TRUE(store.isPassword(password));
    EXPECT_FALSE(store.isPassword(password + " "));
    EXPECT_FALSE(store.isPassword("another"));
}

TEST_F(StoreTest, SettingThePasswordLeavesTheStateAloneAndSavingThePassword) {
    Store store(paths);
    store.live = with_primary_domain("saved");
    store.save();
    const std::string state = ::read_file(paths.state);
    store.setPassword("secret");
    EXPECT_EQ(::read_file(paths.state), state);
    store.save();
    EXPECT_TRUE(store.isPassword("secret"));
}

}  // namespace
}  // namespace standin
