#pragma once

#include <cstdlib>

/// While it lives everything that is waited for in vain fails soon.
class Impatience {
  public:
    Impatience() { setenv("TELUMA_TEST_PATIENCE", "0.01", 1); }
    ~Impatience() { unsetenv("TELUMA_TEST_PATIENCE"); }
    Impatience(const Impatience&) = delete;
    Impatience& operator=(const Impatience&) = delete;
};
