#include "tests/support/failure_of.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

std::string failure_of(const std::function<void()>& piece) {
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
    for (int i = 0; i < results.size(); ++i)
        messages += results.GetTestPartResult(i).message();
    return messages;
}
