#pragma once

#include <string>
#include <vector>

#include "tests/e2e/wizard_run.h"

/// A run of the wizard whose calls about files are watched. One may live at a time.
class WatchedRun : public WizardRun {
  public:
    /// With an order as shim_orders.h has them.
    explicit WatchedRun(const std::string& order = "");

    /// Removes the private directory that a killed run has left behind.
    ~WatchedRun();
    WatchedRun(const WatchedRun&) = delete;
    WatchedRun& operator=(const WatchedRun&) = delete;

    /// Answers every screen with as little to do for the server as can be, but with all that
    /// changes files. Starts at the screen `from`.
    void answerAll(const std::string& domain = "first.example", Stop from = Stop::password);

    /// The calls so far, as shim_orders.h writes them down.
    static std::vector<std::string> calls();

    /// The path of the private directory; empty while there is none.
    static std::string privateDirectory();
};
