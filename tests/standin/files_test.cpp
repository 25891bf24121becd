#include "standin/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/files.h"

namespace standin {
namespace {

TEST(Files, AreReplacedWholeWithTheirMode) {
    const TempDir directory;
    const std::string path = directory / "file";
    EXPECT_TRUE(write_file(path, "old and long", 0644));
    EXPECT_TRUE(write_file(path, "new", 0600));
    EXPECT_EQ(::read_file(path), "new");
    EXPECT_EQ(file_facts(path).mode, 0600U);
    EXPECT_FALSE(exists(path + ".new"));
}

TEST(Files, AFailedWriteLeavesWhatWasThereAndNothingBeside) {
    const TempDir directory;
    const std::string path = directory / "file";
    mkdir(path.c_str(), 0700);
    errno = 0;
    EXPECT_FALSE(write_file(path, "new", 0600));
    EXPECT_EQ(errno, EISDIR);
    EXPECT_TRUE(file_facts(path).is_directory);
    EXPECT_FALSE(exists(path + ".new"));
}

TEST(Files, ALinkPreparedUnderTheNameOfTheNewFileIsNotFollowed) {
    const TempDir directory;
    ::write_file(directory / "precious", "precious");
    ASSERT_EQ(symlink((directory / "precious").c_str(), (directory / "file.new").c_str()), 0);
    EXPECT_TRUE(write_file(directory / "file", "new", 0600));
    EXPECT_EQ(::read_file(directory / "precious"), "precious");
    EXPECT_EQ(::read_file(directory / "file"), "new");
}

TEST(Files, AppendingMakesTheFileAndKeepsWhatItHolds) {
    const TempDir directory;
    EXPECT_TRUE(append_to_file(directory / "log", "one\n"));
    EXPECT_TRUE(append_to_file(directory / "log", "two\n"));
    EXPECT_EQ(::read_file(directory / "log"), "one\ntwo\n");
}

TEST(Files, ReadingWhatIsNotThereFails) {
    const TempDir directory;
    std::string text = "untouched";
    EXPECT_FALSE(read_file(directory / "none", text));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(read_file(directory.path(), text)) << "a directory";
}

}  // namespace
}  // namespace standin
