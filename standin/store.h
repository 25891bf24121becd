#pragma once

#include <string>

#include "files.h"
#include "state.h"

/// `state` as the text of the state file. Each line is one record, its words divided by spaces;
/// what is not set has no line:
///
///     services NAME...
///     primarydomain DOMAIN
///     listener SERVICE ADDRESS
///     enable SERVICE yes
///     certfile SERVICE FILE
///     domain DOMAIN LOCATION PASSWORD
///     domainalias DOMAIN ALIAS
///     account DOMAIN ACCOUNT
///     accountalias DOMAIN ACCOUNT ALIAS
///
/// The last value of a line goes to the line's end and may hold spaces.
std::string state_to_text(const State& state);

/// Reads such a text into `state`. Returns an empty text, or what is wrong with which line; `state`
/// is then half read. A record must come after the one that makes what it belongs to.
std::string state_from_text(const std::string& text, State& state);

/// What the running server knows, and its way to the disk. There is one, shared by all sessions;
/// it must outlive them.
class Store {
  public:
    explicit Store(RunPaths paths);

    /// Takes the saved state, or `first` when nothing has been saved yet. Returns an empty text, or
    /// why the saved state can't be read.
    std::string load(const State& first);

    /// Saves `live`, all of it or nothing. False when the file can't be written.
    bool save() const;

    /// Keeps `password` as the administrator's, apart from the state, so that neither loses the
    /// other. A running server knows it at once. False when it can't be written.
    bool setPassword(const std::string& password) const;

    /// True when `text` is the administrator's password. Nothing is while none has been set.
    bool isPassword(const std::string& text) const;

    State live;                ///< what has been committed
    std::string smtp_filters;  ///< path of the SMTP filters script

  private:
    RunPaths paths;
};
