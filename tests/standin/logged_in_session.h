#pragma once

#include <string>
#include <vector>

#include "standin/session.h"
#include "standin/store.h"
#include "tests/support/files.h"

/// A store in a directory of its own, with the listeners and services of a fresh server and the
/// domain "example.com", and a session in which the administrator has logged in.
class LoggedInSession {
  public:
    LoggedInSession();

    /// Gives the session the lines and returns the reply to the last one.
    std::string say(const std::vector<std::string>& lines);

    /// Gives the session the lines. Returns the first that was refused with its reply, or an empty
    /// text.
    std::string refused(const std::vector<std::string>& lines);

    TempDir directory;
    standin::Store store;
    standin::Session session;
};
