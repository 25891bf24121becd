// Files read by lines, opened, rewritten through the working copy, and kept beside themselves.

#include "apply/file_rewrite.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <string>
#include <vector>

#include "tests/apply/working_directory.h"
#include "tests/support/case_name.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"

namespace {

using Lines = std::vector<std::string>;

constexpr const char* file = "teluma.cfg";

class FileLines : public testing::Test {
  protected:
    // The lines and pieces of lines that a file with this content is read in. A read at its end
    // leaves the last one as it was.
    static Lines linesOf(const std::string& content) {
        write_file(file, content);
        FileRewrite rewrite(file);
        Lines lines;
        std::string line = "before";
        while (rewrite.read(line)) {
            lines.push_back(line);
            EXPECT_EQ(rewrite.goesOn(), line.back() == '\n' || line.size() == 255);
        }
        EXPECT_EQ(line, lines.empty() ? "before" : lines.back());
        EXPECT_FALSE(rewrite.goesOn());
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

struct OpenOriginal : testing::Test {
    WorkingDirectory directory;
};

TEST_F(OpenOriginal, opens_a_file_or_a_link_to_it_for_reading_and_writing_for_this_process_alone) {
    write_file("f", "content");
    ASSERT_EQ(symlink("f", "link"), 0);
    ASSERT_EQ(symlink((directory / "f").c_str(), "absolute"), 0);
    for (const char* name : {"f", "link", "absolute"}) {
        const File original = open_original(name);
        ASSERT_NE(original, nullptr);
        EXPECT_EQ(std::getc(original.get()), 'c');
        EXPECT_EQ(fcntl(fileno(original.get()), F_GETFL) & O_ACCMODE, O_RDWR);
        EXPECT_EQ(fcntl(fileno(original.get()), F_GETFD), FD_CLOEXEC);
    }
    EXPECT_EQ(read_file("f"), "content");
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
    WorkingCopy() { write_file(file, "old\n"); }

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
        const FileRewrite rewrite(file);
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
    for (int (*put)() : {+[] { return link("victim", "temp.cfg"); },
                         +[] { return symlink("victim", "temp.cfg"); }}) {
        ASSERT_EQ(put(), 0);
        EXPECT_FALSE(FileRewrite(file).isOpen());
        EXPECT_EQ(read_file("temp.cfg"), "precious\n");
        unlink("temp.cfg");
    }
    mkdir("temp.cfg", 0700);
    EXPECT_FALSE(FileRewrite(file).isOpen());
    EXPECT_TRUE(exists("temp.cfg"));
}

TEST_F(WorkingCopy, is_copied_over_the_file_which_keeps_its_owner_group_and_mode) {
    chmod(file, 0640);
    const bool other_owner = chown(file, 12, 34) == 0;
    const std::string content("new, and\0 longer\n", 17);
    EXPECT_EQ(install(content, directory / file), installed);
    EXPECT_EQ(read_file(file), content);
    const FileFacts facts = file_facts(file);
    EXPECT_EQ(facts.mode, 0640u);
    EXPECT_EQ(facts.owner, other_owner ? 12 : getuid());
    EXPECT_EQ(facts.group, other_owner ? 34 : getgid());
}

TEST_F(WorkingCopy, of_a_file_that_could_not_be_read_whole_is_only_removed) {
    // Were it not kept yet, that would fail as well.
    write_file("teluma.cfg.beforewizard", "old\n");
    FileRewrite rewrite(file);
    std::string line;
    const Descriptor unreadable(open(file, O_WRONLY));
    ASSERT_NE(dup2(unreadable.get(), rewrite.file()), -1);
    EXPECT_FALSE(rewrite.read(line));
    EXPECT_FALSE(rewrite.goesOn());
    rewrite.write("half");
    EXPECT_EQ(rewrite.install(), not_touched);
    EXPECT_EQ(read_file(file), "old\n");
    EXPECT_FALSE(exists("temp.cfg"));
}

TEST_F(WorkingCopy, that_lacks_a_piece_is_only_removed_though_the_rest_could_be_written) {
    FileRewrite rewrite(file);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit none = {0, limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    rewrite.write(std::string(100000, 'x'));
    setrlimit(RLIMIT_FSIZE, &limit);
    rewrite.write("rest\n");
    EXPECT_EQ(rewrite.install(), not_touched);
    EXPECT_EQ(read_file(file), "old\n");
}

TEST_F(WorkingCopy, is_not_installed_under_a_name_that_fits_into_no_command) {
    std::string name = file;
    while (name.size() < 255 - std::strlen("cp temp.cfg  >> /dev/null")) name.insert(0, "./");
    EXPECT_EQ(install("new\n", name), installed);
    EXPECT_EQ(install("newer\n", name.insert(1, "/")), not_touched);
    EXPECT_EQ(read_file(file), "new\n");
}

constexpr int kept = 0;
constexpr int not_kept = 1;

class OriginalCopy : public testing::Test {
  protected:
    static constexpr const char* copy = "teluma.cfg.beforewizard";
    static constexpr const char* unfinished = "teluma.cfg.beforewizard.new";

    OriginalCopy() {
        write_file(file, "original\n");
        write_file("victim", "precious\n");
    }
    ~OriginalCopy() override { EXPECT_EQ(read_file("victim"), "precious\n"); }

    static int keep() { return keep_copy_beside(Descriptor(open(file, O_RDONLY)).get(), file); }

    WorkingDirectory directory;
};

TEST_F(OriginalCopy, has_every_byte) {
    for (const std::string& bytes : {std::string(), std::string("\0\r\n\377\0", 5),
                                     std::string(65536, 'b'), std::string(200001, '\n')}) {
        write_file(file, bytes);
        unlink(copy);
        EXPECT_EQ(keep(), kept);
        EXPECT_TRUE(read_file(copy) == bytes);
        EXPECT_TRUE(read_file(file) == bytes);
        EXPECT_FALSE(exists(unfinished));
    }
}

// So that it runs for nobody with the rights of its owner.
TEST_F(OriginalCopy, has_the_owner_and_the_mode_but_for_set_ids_whatever_the_mask) {
    const bool other_owner = chown(file, 12, 34) == 0;
    const mode_t mask = umask(0777);
    for (const mode_t mode : {0600u, 0644u, 0666u, 0400u, 01755u, 06755u}) {
        chmod(file, mode);
        unlink(copy);
        EXPECT_EQ(keep(), kept);
        EXPECT_EQ(file_facts(copy).mode, mode & 01777u);
        EXPECT_EQ(file_facts(copy).owner, other_owner ? 12 : getuid());
        EXPECT_EQ(file_facts(copy).group, other_owner ? 34 : getgid());
    }
    umask(mask);
}

TEST_F(OriginalCopy, is_never_made_again) {
    EXPECT_EQ(keep(), kept);
    chmod(copy, 0604);
    write_file(file, "changed\n");
    EXPECT_EQ(keep(), kept);
    EXPECT_EQ(read_file(copy), "original\n");
    EXPECT_EQ(file_facts(copy).mode, 0604u);
    EXPECT_EQ(read_file(file), "changed\n");
}

TEST_F(OriginalCopy, is_not_kept_of_a_file_that_is_missing) {
    unlink(file);
    EXPECT_EQ(keep(), not_kept);
    EXPECT_FALSE(exists(copy));
    EXPECT_FALSE(exists(unfinished));
}

// As a run that was killed has left one; or somebody has made it for the wizard to write to.
TEST_F(OriginalCopy, replaces_a_file_that_has_the_name_it_has_while_it_is_written) {
    ASSERT_EQ(link("victim", unfinished), 0);
    EXPECT_EQ(keep(), kept);
    EXPECT_EQ(read_file(copy), "original\n");
    EXPECT_FALSE(exists(unfinished));
}

// Something that is no copy stands under this name.
struct Obstacle {
    const char* name;
    int (*put)(const char* path);
    int result_as_unfinished = kept;  // it is replaced by the copy
};

class OriginalCopyBeside : public OriginalCopy, public testing::WithParamInterface<Obstacle> {};

TEST_P(OriginalCopyBeside, under_its_name_takes_this_for_none_and_leaves_it_alone) {
    ASSERT_EQ(GetParam().put(copy), 0);
    const mode_t mode = file_facts(copy).mode;
    EXPECT_EQ(keep(), not_kept);
    EXPECT_EQ(read_file(file), "original\n");
    EXPECT_EQ(file_facts(copy).mode, mode);
    EXPECT_FALSE(exists(unfinished));
    EXPECT_FALSE(exists("nothing"));
}

TEST_P(OriginalCopyBeside, under_the_name_it_has_while_it_is_written_replaces_this) {
    ASSERT_EQ(GetParam().put(unfinished), 0);
    EXPECT_EQ(keep(), GetParam().result_as_unfinished);
    EXPECT_EQ(exists(unfinished), GetParam().result_as_unfinished != kept);
    EXPECT_EQ(exists(copy), GetParam().result_as_unfinished == kept);
    EXPECT_FALSE(exists("nothing"));
    if (!exists(copy)) return;
    EXPECT_EQ(read_file(copy), "original\n");
    EXPECT_FALSE(file_facts(copy).is_link);
}

const Obstacle obstacles[] = {
    {"link", [](const char* path) { return symlink("victim", path); }},
    {"link_that_leads_nowhere", [](const char* path) { return symlink("nothing", path); }},
    {"second_name_of_the_file", [](const char* path) { return link(file, path); }},
    {"pipe", [](const char* path) { return mkfifo(path, 0600); }},
    {"directory", [](const char* path) { return mkdir(path, 0700); }, not_kept},
};

INSTANTIATE_TEST_SUITE_P(A, OriginalCopyBeside, testing::ValuesIn(obstacles), CaseName());

}  // namespace
