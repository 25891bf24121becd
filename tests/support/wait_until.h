#pragma once

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

/// The place in a test's source that called a helper, which a failure then names. The compiler
/// fills it in where `Caller caller = Caller::here()` is a default argument.
struct Caller {
    const char* file;
    int line;

    static Caller here(const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
        return {file, line};
    }
};

/// Ends the running test as failed at the caller's line, by an exception that GoogleTest knows:
/// destructors still run.
[[noreturn]] void stop_test(const Caller& caller, const std::string& message);

/// How long a test waits for something before it fails: 30 seconds, times the number in the
/// environment variable TELUMA_TEST_PATIENCE where it is set (a slow or crowded machine).
std::chrono::milliseconds patience();

/// While it lives, whatever is waited for in vain fails soon.
struct Impatience {
    Impatience() { setenv("TELUMA_TEST_PATIENCE", "0.01", 1); }
    ~Impatience() { unsetenv("TELUMA_TEST_PATIENCE"); }
    Impatience(const Impatience&) = delete;
    Impatience& operator=(const Impatience&) = delete;
};

/// The moment when patience() is over.
class Deadline {
  public:
    bool passed() const { return millisecondsLeft(1) == 0; }

    /// Milliseconds that are left, at most `most` and at least 0: a time-out for poll(2).
    int millisecondsLeft(int most) const;

  private:
    std::chrono::steady_clock::time_point end = std::chrono::steady_clock::now() + patience();
};

/// Waits until `condition()` is true, for what no descriptor tells of. When patience() is over the
/// test ends as failed with `description`.
template <class Condition>
void wait_until(Condition condition, const std::string& description,
                const Caller& caller = Caller::here()) {
    const Deadline deadline;
    while (!condition()) {
        if (deadline.passed()) stop_test(caller, "waited in vain until " + description);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}
