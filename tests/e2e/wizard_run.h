#pragma once

#include <string>
#include <vector>

#include "tests/e2e/answers.h"
#include "tests/support/process.h"
#include "tests/support/screen_table.h"
#include "tests/support/terminal_program.h"

/// A run of the wizard in a terminal, and a user who knows every screen. The wizard's sleeps take
/// next to no time: see tests/support/sleep_length.cpp.
///
/// Each of the functions that answers a screen waits for that screen and brings it to the answers,
/// whatever it shows and wherever its focus is, so that it serves for later visits too. It leaves
/// the screen forwards and does not wait for what comes then.
class WizardRun : public TerminalProgram {
  public:
    /// The variable that says how many milliseconds each sleep of the wizard takes: 5, unless the
    /// test's own environment has it.
    static constexpr const char* sleep_variable = "TELUMA_SLEEP_MS";

    /// Runs the wizard of the build.
    explicit WizardRun(int rows = 24, int cols = 80, const std::string& term = "xterm-256color",
                       const std::string& locale = "C.UTF-8");

    /// Runs another one, or a command that becomes the wizard.
    explicit WizardRun(ProgramSetup setup);

    /// Waits until the wizard has taken every key and signal and waits for the next; what it has
    /// drawn until then is on the screen. A wait for the network or a child counts as well.
    void waitForKey(const Caller& caller = Caller::here());

    /// The same for a wizard that may end meanwhile; whether it lives.
    bool comesToRest(const Caller& caller = Caller::here());

    /// Waits until the screen is shown whole.
    void waitForScreen(Stop stop, const Caller& caller = Caller::here());

    /// Waits for a dialog with `text` in it (as it is broken into lines, so name a piece of one).
    void waitForDialog(const std::string& text, const Caller& caller = Caller::here());

    /// Waits for an "Error!" box, expects this message in it and presses its "OK".
    void dismissError(const std::string& message, const Caller& caller = Caller::here());

    /// Answers one screen.
    void answer(Stop stop, const Answers& answers);
    void answerListener(Stop stop, const ListenerAnswer& answer);

    /// Waits for the question about a loopback interface and answers it with "Yes".
    void answerYes();

    /// Answers every screen from `from` up to, but without, `end`, leaving out the listeners of
    /// services that are not ticked. Waits for the screen at `end`.
    void walk(Stop from, Stop end, const Answers& answers = {});

    /// Answers every screen from `from` on, the last included.
    void walkToTheEnd(const Answers& answers = {}, Stop from = Stop::password);

    /// Waits until every step is done, presses "OK" and waits for the end.
    ExitStatus finish(const Caller& caller = Caller::here());

    /// Goes on, or back, from a screen, changing nothing. Waits for the screen first. "Next" on the
    /// last screen is "Yes".
    void pressNext(Stop stop, const Caller& caller = Caller::here());
    void pressBack(Stop stop, const Caller& caller = Caller::here());

    /// Waits for a screen and moves its focus to one of its controls, counted in TAB order from 0.
    void moveFocus(Stop stop, int control, const Caller& caller = Caller::here());

    /// The check marks on the screen, from the top.
    std::vector<bool> ticks();

    /// Replaces the text of the field that has the focus, of at most 50 characters.
    void retype(const std::string& text);

    void pressTimes(Key key, int times);

  private:
    void answerFields(Stop stop, const std::vector<std::string>& texts);  // empty: as it stands
    void answerBoxes(Stop stop, const std::vector<bool>& wanted);  // as many of them as are wanted
};
