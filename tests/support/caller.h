#pragma once

#include <string>

/// The place in a test's source that called a helper, so that a failure names the test's line and
/// not the helper's. Taken by the compiler when `Caller caller = Caller::here()` is a default
/// argument.
struct Caller {
    const char* file;
    int line;

    static Caller here(const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
        return {file, line};
    }
};

/// Ends the running test as failed, with `message`, at the caller's line. Does not return: it
/// throws what GoogleTest takes for an already reported failure, so destructors still run.
[[noreturn]] void stop_test(const Caller& caller, const std::string& message);
