#pragma once

#include <gtest/gtest.h>

#include <optional>

#include "tests/e2e/wizard_run.h"
#include "tests/support/local_port.h"

/// The kinds of dialog that can stand on top of a screen.
enum class Dialog {
    message,     // "OK", on the first screen
    question,    // "No" and "Yes", on the screen of WebAdmin
    retry_back,  // "Retry" and "Back", on the same
    pending,     // no button: the port of WebAdmin is being checked
};

/// Brings wizards to where a dialog stands on top. One object serves any number of wizards, but
/// takes port 9000 of this host for one kind of dialog.
class DialogStage {
  public:
    explicit DialogStage(Dialog dialog);

    /// From the wizard's start to the dialog.
    void open(WizardRun& wizard, const Caller& caller = Caller::here());

    /// How many buttons TAB goes round.
    int buttons() const;

    /// Leaves the dialog, which has the focus where it was at first: back to the screen below (the
    /// first one, or that of WebAdmin); from a pending box, which ends for every wizard, on to the
    /// screen of SMTP.
    void leave(WizardRun& wizard);

  private:
    Dialog kind;
    std::optional<LocalPort> taken;
    std::optional<SilentPort> silent;
};

/// For tests that are run for several dialogs.
class EveryDialog : public testing::TestWithParam<Dialog> {
  protected:
    DialogStage stage{GetParam()};
};

/// A wizard with a dialog on top.
class AtDialog : public EveryDialog {
  protected:
    AtDialog() { stage.open(wizard); }

    WizardRun wizard;
};

std::string dialog_name(const testing::TestParamInfo<Dialog>& info);

inline auto every_dialog() {
    return testing::Values(Dialog::message, Dialog::question, Dialog::retry_back, Dialog::pending);
}
