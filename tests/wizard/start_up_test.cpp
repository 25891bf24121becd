#include "wizard/start_up.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <initializer_list>
#include <string>

#include "tests/support/descriptor.h"
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
    EXPECT_EXIT(fill_those_closed({}), testing::ExitedWithCode(0), "") << "open ones stay";
    EXPECT_EXIT(fill_those_closed({2}), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(fill_those_closed({0, 2}), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(fill_those_closed({0, 1, 2}), testing::ExitedWithCode(0), "");
}

TEST(Superuser, is_the_user_0_in_the_group_0_only) {
    uid_t user = 0;
    gid_t group = 0;
    int asked_for_group = 0;
    replaced_calls.getuid = [&] { return user; };
    replaced_calls.getgid = [&] {
        ++asked_for_group;
        return group;
    };
    EXPECT_TRUE(is_superuser());
    group = 5;
    EXPECT_FALSE(is_superuser());
    EXPECT_EQ(asked_for_group, 2);
    user = 5;
    group = 0;
    EXPECT_FALSE(is_superuser());
    EXPECT_EQ(asked_for_group, 2) << "another user is not asked";
    replaced_calls = {};
}

}  // namespace
