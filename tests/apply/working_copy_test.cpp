#include "apply/working_copy.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "tests/apply/working_directory.h"
#include "tests/support/files.h"

namespace {

constexpr int installed = 0;
constexpr int not_touched = 1;

class WorkingCopy : public testing::Test {
  protected:
    WorkingCopy() { write_file("teluma.cfg", "old\n"); }

    // Writes a working copy and installs it.
    static int install(const std::string& content, bool complete, const std::string& path) {
        std::FILE* original = std::fopen(path.c_str(), "r");
        if (!complete)
            std::fputc('x', original);  // an error, as it is open for reading
        std::FILE* copy = working_copy_open();
        std::fputs(content.c_str(), copy);
        const int result = working_copy_install(copy, original, path.c_str());
        std::fclose(original);
        return result;
    }

    WorkingDirectory directory;
};

TEST_F(WorkingCopy, stands_empty_in_the_current_directory_while_it_is_open) {
    std::FILE* copy = working_copy_open();
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(read_file("temp.cfg"), "");
    std::fclose(copy);
}

TEST_F(WorkingCopy, can_be_read_by_nobody_else) {
    std::FILE* copy = working_copy_open();
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(file_facts("temp.cfg").mode, 0600u);
    std::fclose(copy);
}

TEST_F(WorkingCopy, is_not_made_of_a_file_that_is_there_already) {
    write_file("temp.cfg", "somebody's");
    EXPECT_EQ(working_copy_open(), nullptr);
    EXPECT_EQ(read_file("temp.cfg"), "somebody's");
}

TEST_F(WorkingCopy, is_copied_over_the_file_and_removed) {
    EXPECT_EQ(install("new, and longer\n", true, directory / "teluma.cfg"), installed);
    EXPECT_EQ(read_file("teluma.cfg"), "new, and longer\n");
    EXPECT_FALSE(exists("temp.cfg"));
}

TEST_F(WorkingCopy, leaves_the_file_its_owner_group_and_mode) {
    chmod("teluma.cfg", 0640);
    const bool other_owner = chown("teluma.cfg", 12, 34) == 0;
    EXPECT_EQ(install("new\n", true, "teluma.cfg"), installed);
    const FileFacts facts = file_facts("teluma.cfg");
    EXPECT_EQ(facts.mode, 0640u);
    EXPECT_EQ(facts.owner, other_owner ? 12 : getuid());
    EXPECT_EQ(facts.group, other_owner ? 34 : getgid());
}

TEST_F(WorkingCopy, that_is_not_complete_is_only_removed) {
    EXPECT_EQ(install("half", false, "teluma.cfg"), not_touched);
    EXPECT_EQ(read_file("teluma.cfg"), "old\n");
    EXPECT_FALSE(exists("temp.cfg"));
}

TEST_F(WorkingCopy, may_replace_a_file_whose_name_the_shell_would_take_apart) {
    const std::string name = "it's; $HOME `x` \"y\" & z";
    write_file(name, "old\n");
    EXPECT_EQ(install("new\n", true, name), installed);
    EXPECT_EQ(read_file(name), "new\n");
}

TEST_F(WorkingCopy, is_not_installed_under_a_name_that_fits_into_no_command) {
    std::string name = "teluma.cfg";
    for (int i = 0; i < 130; ++i)
        name.insert(0, "./");
    EXPECT_EQ(install("new\n", true, name), not_touched);
    EXPECT_EQ(read_file("teluma.cfg"), "old\n");
    EXPECT_FALSE(exists("temp.cfg"));
}

TEST_F(WorkingCopy, cannot_be_made_where_its_name_is_taken_by_a_directory) {
    mkdir("temp.cfg", 0700);
    EXPECT_EQ(working_copy_open(), nullptr);
}

TEST_F(WorkingCopy, is_not_written_through_a_link_that_somebody_has_put_there) {
    write_file("victim", "precious\n");
    ASSERT_EQ(symlink("victim", "temp.cfg"), 0);
    std::FILE* copy = working_copy_open();
    if (copy != nullptr)
        std::fclose(copy);
    EXPECT_EQ(read_file("victim"), "precious\n");
}

}  // namespace
