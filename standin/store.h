#pragma once

#include <string>

#include "run_paths.h"
#include "state.h"

namespace standin {

/// What the running server knows, and its way to the disk. There is one, shared by all sessions;
/// it must outlive them.
class Store {
  public:
    explicit Store(RunPaths files);

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

}  // namespace standin
