#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "apply/working_copy.h"
#include "tests/apply/working_directory.h"
#include "tests/support/files.h"

namespace {

class OpenOriginal : public testing::Test {
  protected:
    // Whether it can be opened; it is closed again.
    static bool opens(const char* path) {
        std::FILE* original = open_original(path);
        if (original == nullptr)
            return false;
        std::fclose(original);
        return true;
    }

    WorkingDirectory directory;
};

TEST_F(OpenOriginal, opens_a_file_for_reading_and_writing_and_for_this_process_alone) {
    write_file("file", "content");
    std::FILE* original = open_original("file");
    ASSERT_NE(original, nullptr);
    EXPECT_EQ(std::getc(original), 'c');
    EXPECT_EQ(fcntl(fileno(original), F_GETFL) & O_ACCMODE, O_RDWR);
    EXPECT_EQ(fcntl(fileno(original), F_GETFD), FD_CLOEXEC);
    std::fclose(original);
    EXPECT_EQ(read_file("file"), "content");
}

TEST_F(OpenOriginal, makes_no_file) {
    EXPECT_FALSE(opens("missing"));
    EXPECT_FALSE(exists("missing"));
}

TEST_F(OpenOriginal, refuses_a_pipe_which_nobody_may_ever_write_to) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_FALSE(opens("pipe"));
}

TEST_F(OpenOriginal, refuses_a_link_to_itself) {
    ASSERT_EQ(symlink("circle", "circle"), 0);
    EXPECT_FALSE(opens("circle"));
}

TEST_F(OpenOriginal, refuses_a_link_to_a_pipe) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    ASSERT_EQ(symlink("pipe", "link"), 0);
    EXPECT_FALSE(opens("link"));
}

TEST_F(OpenOriginal, refuses_a_directory) {
    EXPECT_FALSE(opens("."));
}

TEST_F(OpenOriginal, refuses_a_device_that_never_ends) {
    EXPECT_FALSE(opens("/dev/zero"));
}

TEST_F(OpenOriginal, refuses_a_link_that_leads_to_itself) {
    ASSERT_EQ(symlink("link", "link"), 0);
    EXPECT_FALSE(opens("link"));
}

TEST_F(OpenOriginal, follows_a_link_to_a_file) {
    write_file("file", "content");
    ASSERT_EQ(symlink("file", "link"), 0);
    EXPECT_TRUE(opens("link"));
}

}  // namespace
