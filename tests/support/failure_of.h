#pragma once

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <string>

/// Runs a piece of a test that is meant to fail and returns the messages of its failures, which the
/// running test doesn't get.
template <class Piece>
std::string failure_of(Piece piece) {
    testing::TestPartResultArray results;
    {
        const testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        try {
            piece();
        } catch (const testing::AssertionException&) {
            // Its failure has been reported before it was thrown.
        }
    }
    std::string messages;
    for (int i = 0; i < results.size(); ++i) messages += results.GetTestPartResult(i).message();
    return messages;
}
