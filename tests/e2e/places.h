#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/e2e/wizard_run.h"
#include "tests/support/installed_server.h"
#include "tests/support/local_port.h"
#include "tests/support/system_log.h"

/// Where the wizard can wait: on a screen, in a dialog on top of one, while it applies the answers.
/// There each wait is for ever, but that a signal can cut the last three short.
enum class Place {
    screen,             // that of the domain, for all: they share their wait for a key
    message,            // a dialog with "OK", on the first screen
    question,           // with "No" and "Yes", on the screen of WebAdmin
    retry_back,         // with "Retry" and "Back", on the same
    pending,            // without a button: the port of WebAdmin is being checked
    old_pid_file,       // a server that does not end
    password_command,   // the server's executable
    start_command,      // the same
    connection,         // a host that does not answer
    silent_server,      // an answer
    account,            // the look-up of the server's account
    system_log,         // a system log that takes no more
    step_error,         // "OK" in the dialog that tells of a failed step
    login_error,        // the same of a failed login
    final_ok,           // "OK" when all is done
    log_connection,     // a system log that takes no more connections
    new_pid_file,       // the pid file of a server that runs, in a sleep
    before_connecting,  // a server that comes up, in a sleep
};

std::string place_name(const testing::TestParamInfo<Place>& info);

/// The places from the screen to this one, in their order.
std::vector<Place> places_up_to(Place last);

/// A process that is not the server, for pid files and executables that lead elsewhere.
class Decoy : private TerminalProgram {
  public:
    Decoy();

    using TerminalProgram::pid;

    /// Has the server's executable do nothing at its start but name this process in the pid file.
    void replace(const InstalledServer& server) const;

    /// Waits until it has got so many SIGTERMs.
    void waitForSignals(int count);
};

/// Prepares a sandbox so that the wizards that are started then come to a place. One object serves
/// any number of them up to the dialogs, one while the answers are applied.
class Stage {
  public:
    explicit Stage(Place place);

    /// From the wizard's start to the place.
    void open(WizardRun& wizard, const Caller& caller = Caller::here());

    /// The stuck command, where the wait is for one.
    pid_t command() const;

    /// After the wizard's end: waits until the server has been told to end where its process id was
    /// known, and expects that nobody has been told anything where not.
    void expectServerTold();

  private:
    void walk(WizardRun& wizard) const;

    Place place;
    InstalledServer server;
    std::optional<Decoy> decoy;
    std::optional<LocalPort> takenPort;
    std::optional<SilentPort> silentPort;
    std::optional<SystemLog> systemLog;
    Descriptor stuckLog;
};

/// A wizard at a place.
template <class Wizard>
class WizardAt : public testing::TestWithParam<Place> {
  protected:
    WizardAt() { stage.open(wizard); }

    Stage stage{GetParam()};
    Wizard wizard;
};
