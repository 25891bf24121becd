// Files read by lines, opened, and rewritten through the working copy.

#include "apply/file_rewrite.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "tests/apply/working_directory.h"
#include "tests/support/files.h"

namespace {

using Lines = std::vector<std::string>;

class FileLines : public testing::Test {
  protected:
    // The lines and pieces of lines that a file with this content is read in. A read at its end
    // leaves the last one as it was.
    static Lines linesOf(const std::string& content) {
        write_file("file", content);
        FileRewrite file("file");
        Lines lines;
        std::string line = "before";
        while (file.read(line)) lines.push_back(line);
        EXPECT_EQ(line, lines.empty() ? "before" : lines.back());
        EXPECT_FALSE(file.goesOn());
        return lines;
    }

    WorkingDirectory directory;
};

TEST_F(FileLines, are_read_with_their_line_feeds) {
    EXPECT_EQ(linesOf("one\n\nthree\n"), (Lines{"one\n", "\n", "three\n"}));
    EXPECT_EQ(linesOf("one\ntwo"), (Lines{"one\n", "two"}));
    EXPECT_EQ(linesOf(""), Lines{});
    const std::string odd("a\0b\r\n\0\n", 7);
    EXPECT_EQ(linesOf(odd), (Lines{odd.substr(0, 5), odd.substr(5)}));
}

TEST_F(FileLines, longer_than_255_bytes_come_in_pieces) {
    const std::string whole = std::string(254, 'x') + "\n";
    const std::string piece(255, 'x');
    EXPECT_EQ(linesOf(whole + "next\n"), (Lines{whole, "next\n"}));
    EXPECT_EQ(linesOf(piece + "\n"), (Lines{piece, "\n"}));
    EXPECT_EQ(linesOf(piece + piece + "rest\n"), (Lines{piece, piece, "rest\n"}));
}

TEST_F(FileLines, the_end_of_the_file_is_met_with_a_last_line_that_has_no_line_feed) {
    for (const char* content : {"only\n", "only"}) {
        write_file("file", content);
        FileRewrite file("file");
        std::string line;
        EXPECT_TRUE(file.read(line));
        EXPECT_EQ(file.goesOn(), std::string(content).back() == '\n');
    }
}

class OpenOriginal : public testing::Test {
    WorkingDirectory directory;
};

TEST_F(OpenOriginal, opens_a_file_or_a_link_to_it_for_reading_and_writing_for_this_process_alone) {
    write_file("file", "content");
    ASSERT_EQ(symlink("file", "link"), 0);
    for (const char* name : {"file", "link"}) {
        const File original = open_original(name);
        ASSERT_NE(original, nullptr);
        EXPECT_EQ(std::getc(original.get()), 'c');
        EXPECT_EQ(fcntl(fileno(original.get()), F_GETFL) & O_ACCMODE, O_RDWR);
        EXPECT_EQ(fcntl(fileno(original.get()), F_GETFD), FD_CLOEXEC);
    }
    EXPECT_EQ(read_file("file"), "content");
}

// Nobody may ever write to the pipe, and the device never ends.
TEST_F(OpenOriginal, refuses_what_is_no_file) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    ASSERT_EQ(symlink("pipe", "link"), 0);
    ASSERT_EQ(symlink("circle", "circle"), 0);
    for (const char* name : {"missing", "pipe", "link", "circle", ".", "", "/dev/zero"})
        EXPECT_EQ(open_original(name), nullptr) << name;
    EXPECT_FALSE(exists("missing"));
}

constexpr int installed = 0;
constexpr int not_touched = 1;

class WorkingCopy : public testing::Test {
  protected:
    WorkingCopy() { write_file("teluma.cfg", "old\n"); }

    // Writes a working copy and installs it.
    static int install(const std::string& content, const std::string& path) {
        FileRewrite rewrite(path.c_str());
        EXPECT_TRUE(rewrite.isOpen());
        rewrite.write(content);
        const int result = rewrite.install();
        EXPECT_FALSE(exists("temp.cfg"));
        return result;
    }

    WorkingDirectory directory;
};

TEST_F(WorkingCopy, stands_in_the_current_directory_readable_by_nobody_else_while_it_is_needed) {
    {
        const FileRewrite rewrite("teluma.cfg");
        EXPECT_TRUE(rewrite.isOpen());
        EXPECT_EQ(read_file("temp.cfg"), "");
        EXPECT_EQ(file_facts("temp.cfg").mode, 0600u);
    }
    EXPECT_FALSE(exists("temp.cfg"));
    EXPECT_FALSE(FileRewrite("missing").isOpen());
    EXPECT_FALSE(exists("temp.cfg"));
}

TEST_F(WorkingCopy, is_not_made_of_what_is_there_already) {
    write_file("victim", "precious\n");
    write_file("temp.cfg", "somebody's");
    EXPECT_FALSE(FileRewrite("teluma.cfg").isOpen());
    EXPECT_EQ(read_file("temp.cfg"), "somebody's");
    unlink("temp.cfg");
    ASSERT_EQ(symlink("victim", "temp.cfg"), 0);
    EXPECT_FALSE(FileRewrite("teluma.cfg").isOpen());
    EXPECT_EQ(read_file("victim"), "precious\n");
    unlink("temp.cfg");
    mkdir("temp.cfg", 0700);
    EXPECT_FALSE(FileRewrite("teluma.cfg").isOpen());
    EXPECT_TRUE(exists("temp.cfg"));
}

TEST_F(WorkingCopy, is_copied_over_the_file_which_keeps_its_owner_group_and_mode) {
    chmod("teluma.cfg", 0640);
    const bool other_owner = chown("teluma.cfg", 12, 34) == 0;
    const std::string content("new, and\0 longer\n", 17);
    EXPECT_EQ(install(content, directory / "teluma.cfg"), installed);
    EXPECT_EQ(read_file("teluma.cfg"), content);
    const FileFacts facts = file_facts("teluma.cfg");
    EXPECT_EQ(facts.mode, 0640u);
    EXPECT_EQ(facts.owner, other_owner ? 12 : getuid());
    EXPECT_EQ(facts.group, other_owner ? 34 : getgid());
}

TEST_F(WorkingCopy, of_a_file_that_could_not_be_read_whole_is_only_removed) {
    {
        FileRewrite rewrite("teluma.cfg");
        std::string line;
        // A process's memory can't be read at address 0, proc(5).
        const Descriptor unreadable(open("/proc/self/mem", O_RDONLY));
        ASSERT_NE(dup2(unreadable.get(), rewrite.file()), -1);
        EXPECT_FALSE(rewrite.read(line));
        EXPECT_FALSE(rewrite.goesOn());
        rewrite.write("half");
        EXPECT_EQ(rewrite.install(), not_touched);
    }
    EXPECT_EQ(read_file("teluma.cfg"), "old\n");
    EXPECT_FALSE(exists("temp.cfg"));
    EXPECT_FALSE(exists("teluma.cfg.beforewizard"));
}

TEST_F(WorkingCopy, may_replace_a_file_whose_name_the_shell_would_take_apart) {
    const std::string name = "it's; $HOME `x` \"y\" & z";
    write_file(name, "old\n");
    EXPECT_EQ(install("new\n", name), installed);
    EXPECT_EQ(read_file(name), "new\n");
}

TEST_F(WorkingCopy, is_not_installed_under_a_name_that_fits_into_no_command) {
    std::string name = "teluma.cfg";
    for (int i = 0; i < 130; ++i) name.insert(0, "./");
    EXPECT_EQ(install("new\n", name), not_touched);
    EXPECT_EQ(read_file("teluma.cfg"), "old\n");
}

}  // namespace
