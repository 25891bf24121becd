#include "apply/original_copy.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "tests/apply/working_directory.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"

namespace {

constexpr int kept = 0;
constexpr int not_kept = 1;

constexpr const char* file = "teluma.cfg";
constexpr const char* copy = "teluma.cfg.beforewizard";
constexpr const char* unfinished = "teluma.cfg.beforewizard.new";

class OriginalCopy : public testing::Test {
  protected:
    OriginalCopy() { write_file(file, "original\n"); }

    static int keep() { return keep_original(Descriptor(open(file, O_RDONLY)).get(), file); }

    // That nothing is made and what stands there is left alone.
    static void expectRefused() {
        EXPECT_EQ(keep(), not_kept);
        EXPECT_EQ(read_file(file), "original\n");
        EXPECT_FALSE(exists(unfinished));
    }

    WorkingDirectory directory;
};

class OriginalCopyOfBytes : public OriginalCopy, public testing::WithParamInterface<std::string> {};

TEST_P(OriginalCopyOfBytes, has_them_all) {
    write_file(file, GetParam());
    EXPECT_EQ(keep(), kept);
    EXPECT_TRUE(read_file(copy) == GetParam());
    EXPECT_TRUE(read_file(file) == GetParam());
    EXPECT_FALSE(exists(unfinished));
}

const std::string every_bytes[] = {"", "text without a line end", std::string("\0\r\n\377\0", 5),
                                   std::string(65536, 'b'), std::string(200001, '\n')};

INSTANTIATE_TEST_SUITE_P(Every, OriginalCopyOfBytes, testing::ValuesIn(every_bytes));

TEST_F(OriginalCopy, has_the_mode_whatever_the_mask) {
    const mode_t mask = umask(0777);
    for (const mode_t mode : {0600u, 0644u, 0666u, 0400u, 01755u}) {
        chmod(file, mode);
        unlink(copy);
        EXPECT_EQ(keep(), kept);
        EXPECT_EQ(file_facts(copy).mode, mode);
    }
    umask(mask);
}

TEST_F(OriginalCopy, runs_for_nobody_with_the_rights_of_its_owner) {
    chmod(file, 06755);
    EXPECT_EQ(keep(), kept);
    EXPECT_EQ(file_facts(copy).mode, 0755u);
}

TEST_F(OriginalCopy, has_the_owner_and_the_group) {
    if (chown(file, 12, 34) != 0)
        GTEST_SKIP() << "only the superuser gives files away";
    chmod(file, 06750);
    EXPECT_EQ(keep(), kept);
    EXPECT_EQ(file_facts(copy).owner, 12u);
    EXPECT_EQ(file_facts(copy).group, 34u);
    EXPECT_EQ(file_facts(copy).mode, 0750u);
}

TEST_F(OriginalCopy, is_never_made_again) {
    EXPECT_EQ(keep(), kept);
    write_file(file, "changed\n");
    EXPECT_EQ(keep(), kept);
    EXPECT_EQ(read_file(copy), "original\n");
    EXPECT_EQ(read_file(file), "changed\n");
}

TEST_F(OriginalCopy, a_file_that_has_the_name_already_stays) {
    write_file(copy, "somebody's\n", 0604);
    EXPECT_EQ(keep(), kept);
    EXPECT_EQ(read_file(copy), "somebody's\n");
    EXPECT_EQ(file_facts(copy).mode, 0604u);
}

TEST_F(OriginalCopy, is_not_kept_of_a_file_that_is_missing) {
    unlink(file);
    EXPECT_EQ(keep(), not_kept);
    EXPECT_FALSE(exists(copy));
    EXPECT_FALSE(exists(unfinished));
}

TEST_F(OriginalCopy, a_link_under_its_name_is_not_taken_for_it) {
    write_file("victim", "precious\n");
    ASSERT_EQ(symlink("victim", copy), 0);
    expectRefused();
    EXPECT_EQ(read_file("victim"), "precious\n");
    EXPECT_EQ(link_target(copy), "victim");
}

TEST_F(OriginalCopy, a_link_under_its_name_that_leads_nowhere_is_not_written_through) {
    ASSERT_EQ(symlink("nothing", copy), 0);
    expectRefused();
    EXPECT_FALSE(exists("nothing"));
    EXPECT_EQ(link_target(copy), "nothing");
}

TEST_F(OriginalCopy, a_second_name_of_the_file_itself_is_not_taken_for_it) {
    ASSERT_EQ(link(file, copy), 0);
    expectRefused();
}

TEST_F(OriginalCopy, a_pipe_under_its_name_is_not_waited_for) {
    ASSERT_EQ(mkfifo(copy, 0600), 0);
    expectRefused();
}

TEST_F(OriginalCopy, a_directory_under_its_name_is_not_taken_for_it) {
    ASSERT_EQ(mkdir(copy, 0700), 0);
    expectRefused();
    EXPECT_TRUE(file_facts(copy).is_directory);
}

// What stands under the name that the copy has while it is written.
class UnfinishedCopy : public OriginalCopy {
  protected:
    UnfinishedCopy() { write_file("victim", "precious\n"); }

    static void expectReplaced() {
        EXPECT_EQ(keep(), kept);
        EXPECT_EQ(read_file(copy), "original\n");
        EXPECT_FALSE(file_facts(copy).is_link);
        EXPECT_EQ(read_file("victim"), "precious\n");
        EXPECT_FALSE(exists(unfinished));
    }
};

TEST_F(UnfinishedCopy, of_a_run_that_was_killed_is_replaced) {
    write_file(unfinished, "orig", 0600);
    expectReplaced();
}

TEST_F(UnfinishedCopy, that_is_a_link_is_not_written_through) {
    ASSERT_EQ(symlink("victim", unfinished), 0);
    expectReplaced();
}

TEST_F(UnfinishedCopy, that_is_a_second_name_of_a_file_is_not_written_to) {
    ASSERT_EQ(link("victim", unfinished), 0);
    expectReplaced();
}

TEST_F(UnfinishedCopy, that_is_a_pipe_is_not_waited_for) {
    ASSERT_EQ(mkfifo(unfinished, 0600), 0);
    expectReplaced();
}

TEST_F(UnfinishedCopy, that_is_a_directory_bars_the_way) {
    ASSERT_EQ(mkdir(unfinished, 0700), 0);
    EXPECT_EQ(keep(), not_kept);
    EXPECT_FALSE(exists(copy));
    EXPECT_TRUE(file_facts(unfinished).is_directory);
}

}  // namespace
