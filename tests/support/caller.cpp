#include "tests/support/caller.h"

#include <gtest/gtest.h>

void stop_test(const Caller& caller, const std::string& message) {
    ADD_FAILURE_AT(caller.file, caller.line) << message;
    throw testing::AssertionException(testing::TestPartResult(
        testing::TestPartResult::kFatalFailure, caller.file, caller.line, message.c_str()));
}
