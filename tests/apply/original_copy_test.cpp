#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "apply/file_rewrite.h"
#include "tests/apply/working_directory.h"
#include "tests/support/case_name.h"
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
TEST_F(OriginalCopy, has_the_mode_but_for_set_ids_whatever_the_mask) {
    const mode_t mask = umask(0777);
    for (const mode_t mode : {0600u, 0644u, 0666u, 0400u, 01755u, 06755u}) {
        chmod(file, mode);
        unlink(copy);
        EXPECT_EQ(keep(), kept);
        EXPECT_EQ(file_facts(copy).mode, mode & 01777u);
    }
    umask(mask);
}

TEST_F(OriginalCopy, has_the_owner_and_the_group) {
    if (chown(file, 12, 34) != 0) GTEST_SKIP() << "only the superuser gives files away";
    chmod(file, 06750);
    EXPECT_EQ(keep(), kept);
    EXPECT_EQ(file_facts(copy).owner, 12u);
    EXPECT_EQ(file_facts(copy).group, 34u);
    EXPECT_EQ(file_facts(copy).mode, 0750u);
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

TEST_F(OriginalCopy, replaces_what_a_run_that_was_killed_has_left_of_it) {
    ASSERT_EQ(link("victim", unfinished), 0);
    EXPECT_EQ(keep(), kept);
    write_file(unfinished, "orig", 0600);
    unlink(copy);
    EXPECT_EQ(keep(), kept);
    EXPECT_EQ(read_file(copy), "original\n");
    EXPECT_FALSE(exists(unfinished));
}

}  // namespace
