#pragma once

#include <gtest/gtest.h>

/// To be called by the SetUp() of fixtures whose cases need a process of their own, because the
/// code under test remembers things for as long as the program runs. Where such cases share a
/// process, all but the first fail; CTest gives each its own, if its suite is named in
/// add_unit_tests().
inline void require_own_process() {
    static bool used = false;
    ASSERT_FALSE(used) << "needs a process of its own; ctest gives it one";
    used = true;
}
