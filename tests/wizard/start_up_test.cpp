#include "wizard/start_up.h"

#include <curses.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <string>

#include "tests/support/descriptor.h"
#include "tests/support/pty.h"
#include "tests/wizard/replaced_calls.h"

namespace {

/// What a descriptor of this process is open on; empty where it is closed.
std::string file_of(int descriptor) {
    std::error_code closed;
    return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), closed);
}

/// For a process that ends: status 0 if, with these descriptors closed, the three standard ones are
/// open afterwards, on what they were or else on /dev/null, and no other one besides.
[[noreturn]] void fill_those_closed(std::initializer_list<int> closed) {
    std::string expected[] = {file_of(0), file_of(1), file_of(2)};
    const long before = open_descriptors();
    for (const int descriptor : closed) {
        close(descriptor);
        expected[descriptor] = "/dev/null";
    }
    fill_standard_descriptors();
    bool as_expected = open_descriptors() == before;
    for (int descriptor = 0; descriptor <= 2; ++descriptor)
        as_expected = as_expected && file_of(descriptor) == expected[descriptor];
    _exit(as_expected ? 0 : 1);
}

TEST(StandardDescriptors, that_are_closed_are_opened_on_the_null_device) {
    EXPECT_EXIT(fill_those_closed({2}), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(fill_those_closed({0, 2}), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(fill_those_closed({0, 1, 2}), testing::ExitedWithCode(0), "");
}

TEST(StandardDescriptors, that_are_open_stay_what_they_are) {
    EXPECT_EXIT(fill_those_closed({}), testing::ExitedWithCode(0), "");
}

/// For a process that ends: status 0 if curses, with that in the environment, comes to wait so many
/// milliseconds for what follows an Escape.
[[noreturn]] void expect_delay(const char* in_environment, int milliseconds) {
    const Pty pty(24, 80);
    const Descriptor terminal = pty.openProgramSide();
    dup2(terminal.get(), STDIN_FILENO);
    dup2(terminal.get(), STDOUT_FILENO);
    setenv("TERM", "xterm-256color", 1);
    unsetenv("ESCDELAY");
    if (in_environment != nullptr)
        setenv("ESCDELAY", in_environment, 1);
    start_curses();
    _exit(get_escdelay() == milliseconds ? 0 : 1);
}

TEST(Escape, is_waited_behind_for_a_fifth_of_a_second_unless_the_environment_tells_how_long) {
    EXPECT_EXIT(expect_delay(nullptr, 200), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(expect_delay("750", 750), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(expect_delay("0", 0), testing::ExitedWithCode(0), "");
}

class Superuser : public testing::Test {
  protected:
    ~Superuser() override {
        replaced_calls.getuid = nullptr;
        replaced_calls.getgid = nullptr;
    }

    void runAs(uid_t user, gid_t group) {
        replaced_calls.getuid = [user] { return user; };
        replaced_calls.getgid = [this, group] {
            ++asked_for_group;
            return group;
        };
    }

    int asked_for_group = 0;
};

TEST_F(Superuser, is_the_user_0_in_the_group_0_only) {
    runAs(0, 0);
    EXPECT_TRUE(is_superuser());
    runAs(0, 5);
    EXPECT_FALSE(is_superuser());
    runAs(5, 0);
    EXPECT_FALSE(is_superuser());
}

TEST_F(Superuser, another_user_is_not_asked_for_the_group) {
    runAs(5, 0);
    is_superuser();
    EXPECT_EQ(asked_for_group, 0);
}

}  // namespace
