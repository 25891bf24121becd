#include "apply/file_line.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/files.h"

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

class FileLines : public testing::Test {
  protected:
    File open(const char* mode) { return {std::fopen(path.c_str(), mode), std::fclose}; }

    // The lines and pieces of lines that a file with this content is read in.
    std::vector<std::string> linesOf(const std::string& content) {
        write_file(path, content);
        const File file = open("r");
        std::vector<std::string> lines;
        for (FileLine line; read_file_line(file.get(), line);) {
            EXPECT_EQ(line.text[line.length], '\0');
            lines.emplace_back(line.text, line.length);
        }
        return lines;
    }

    TempDir directory;
    const std::string path = directory / "file";
};

using Lines = std::vector<std::string>;

TEST_F(FileLines, are_read_with_their_line_feeds) {
    EXPECT_EQ(linesOf("one\n\nthree\n"), (Lines{"one\n", "\n", "three\n"}));
}

TEST_F(FileLines, the_last_one_may_lack_a_line_feed) {
    EXPECT_EQ(linesOf("one\ntwo"), (Lines{"one\n", "two"}));
}

TEST_F(FileLines, an_empty_file_has_none) {
    EXPECT_EQ(linesOf(""), Lines{});
}

TEST_F(FileLines, may_hold_zero_bytes_and_carriage_returns) {
    const std::string odd("a\0b\r\n\0\n", 7);
    EXPECT_EQ(linesOf(odd), (Lines{odd.substr(0, 5), odd.substr(5)}));
}

TEST_F(FileLines, of_255_bytes_with_the_line_feed_come_whole) {
    const std::string line = std::string(254, 'x') + "\n";
    EXPECT_EQ(linesOf(line + "next\n"), (Lines{line, "next\n"}));
}

TEST_F(FileLines, longer_ones_come_in_pieces_of_255_bytes) {
    EXPECT_EQ(linesOf(std::string(255, 'x') + "\n"), (Lines{std::string(255, 'x'), "\n"}));
    EXPECT_EQ(linesOf(std::string(600, 'x') + "\n"),
              (Lines{std::string(255, 'x'), std::string(255, 'x'), std::string(90, 'x') + "\n"}));
}

TEST_F(FileLines, a_read_at_the_end_leaves_the_line_as_it_was) {
    write_file(path, "only\n");
    const File file = open("r");
    FileLine line;
    EXPECT_TRUE(read_file_line(file.get(), line));
    EXPECT_EQ(std::feof(file.get()), 0);
    EXPECT_FALSE(read_file_line(file.get(), line));
    EXPECT_STREQ(line.text, "only\n");
    EXPECT_EQ(line.length, 5u);
    EXPECT_NE(std::feof(file.get()), 0);
}

TEST_F(FileLines, reading_a_last_line_without_a_line_feed_finds_the_end_of_the_file) {
    write_file(path, "only");
    const File file = open("r");
    FileLine line;
    EXPECT_TRUE(read_file_line(file.get(), line));
    EXPECT_NE(std::feof(file.get()), 0);
}

TEST_F(FileLines, are_written_with_all_their_bytes) {
    FileLine line;
    line.length = 4;
    line.text[0] = 'a';
    line.text[2] = 'b';
    line.text[3] = '\n';
    {
        const File file = open("w");
        EXPECT_TRUE(write_file_line(file.get(), line));
        EXPECT_TRUE(write_file_line(file.get(), FileLine()));
    }
    EXPECT_EQ(read_file(path), std::string("a\0b\n", 4));
}

TEST_F(FileLines, a_write_that_fails_is_told) {
    const File file(std::fopen("/dev/full", "w"), std::fclose);
    std::setbuf(file.get(), nullptr);
    FileLine line;
    line.length = 1;
    EXPECT_FALSE(write_file_line(file.get(), line));
}

}  // namespace
