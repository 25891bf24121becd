#pragma once

#include <gtest/gtest.h>

/// To be called by the SetUp() of fixtures whose cases need a process of their own, as CTest gives
/// each, because the code under test remembers things for as long as the program runs. Where many
/// cases run in one process, all but the first are skipped.
inline void require_own_process() {
    static bool used = false;
    if (used)
        GTEST_SKIP() << "needs a process of its own; ctest gives it one";
    used = true;
}
