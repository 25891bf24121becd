#pragma once

#include <gtest/gtest.h>

#include <optional>

#include "tests/e2e/apply_decoy.h"
#include "tests/e2e/wizard_run.h"
#include "tests/support/installed_server.h"
#include "tests/support/local_port.h"
#include "tests/support/system_log.h"

/// What the wizard can be waiting for while it applies the answers, each time for ever.
enum class ApplyWait {
    old_pid_file,       // a server that does not end
    password_command,   // the server's executable
    start_command,      // the same
    new_pid_file,       // the pid file of a server that runs, in a sleep
    before_connecting,  // a server that comes up, in a sleep
    connection,         // a host that does not answer
    silent_server,      // an answer
    account,            // the look-up of the server's account
    system_log,         // a system log that takes no more
    step_error,         // "OK" in the dialog that tells of a failed step
    login_error,        // the same of a failed login
    final_ok,           // "OK" when all is done
};

/// Prepares a sandbox's server so that wizards that are started then come to wait for something,
/// and brings them there. One object serves one wizard.
class ApplyStage {
  public:
    explicit ApplyStage(ApplyWait wait);

    /// From the wizard's start to the wait.
    void open(WizardRun& wizard, const Caller& caller = Caller::here());

    /// The stuck command, where the wait is for one.
    pid_t command() const;

    /// After the wizard's end: waits until the server has been told to end where its process id was
    /// known, and expects that nobody has been told anything where not.
    void expectServerTold() const;

  private:
    ApplyWait kind;
    InstalledServer server;
    std::optional<Decoy> decoy;
    std::optional<SilentPort> silentPort;
    std::optional<SystemLog> systemLog;
};

std::string apply_wait_name(const testing::TestParamInfo<ApplyWait>& info);

inline auto every_apply_wait() {
    return testing::Values(ApplyWait::old_pid_file, ApplyWait::password_command,
                           ApplyWait::start_command, ApplyWait::new_pid_file,
                           ApplyWait::before_connecting, ApplyWait::connection,
                           ApplyWait::silent_server, ApplyWait::account, ApplyWait::system_log,
                           ApplyWait::step_error, ApplyWait::login_error, ApplyWait::final_ok);
}
