#pragma once

#include <deque>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "tests/support/curses_terminal.h"
#include "tests/support/emulator.h"
#include "tests/support/screen_image.h"
#include "tests/support/wait_until.h"
#include "tests/support/waits.h"
#include "wizard/base/screen_state.h"

struct Size {
    int rows;
    int cols;
};

using TextPairs = std::vector<std::pair<std::string, std::string>>;

/// The terminal and the host that the wizard finds.
struct RigSetup {
    Size size = {24, 80};
    /// Names and addresses on the listener screens, that for all interfaces included. All addresses
    /// are this machine's own, so that a port probe stays in it.
    TextPairs interfaces = {{"all", "0.0.0.0"}, {"lo", "127.0.0.1"}, {"eth0", "127.0.0.2"}};
    /// The networks of the relay screen, with their masks.
    TextPairs networks = {
        {"127.0.0.0", "255.0.0.0"}, {"192.168.1.0", "255.255.255.0"}, {"10.20.0.0", "255.255.0.0"}};
};

/// What stands in the place of the apply sequence here: it touches no server, notes how it was
/// called and sends the user on, with the focus that a step which fails leaves there.
struct ApplyDouble {
    int leads_to = state_end;            // the `screen_state` that it sets
    WizardEnd end = WizardEnd::not_yet;  // what it returns; completed where that is state_end

    int calls = 0;
    int sendmail_wrapper = -1;   // the answer that it found in the settings
    int state = -1;              // the `screen_state` that it found
    bool shows_nothing = false;  // nothing was on the panel stack
};

extern ApplyDouble apply_double;

/// One thing that happens while the wizard waits for a key: a key is pressed, a text (or several
/// keys, "\t" and the like) is typed, or a function is called.
using Step = std::variant<Key, std::string, std::function<void()>>;

/// The wizard with its screens, as start-up leaves it, on a terminal of its own. All that belongs
/// to the process starts from the beginning: settings, states, focus numbers, the host's networks.
class WizardRig {
  public:
    /// The wizard will begin with the screen of `state`.
    explicit WizardRig(int state, const RigSetup& setup = {});
    WizardRig(int state, const Size& size) : WizardRig(state, RigSetup{size}) {}
    ~WizardRig();
    WizardRig(const WizardRig&) = delete;
    WizardRig& operator=(const WizardRig&) = delete;

    /// Runs the screens from the one that `screen_state` names, doing the next of the steps
    /// whenever the wizard waits for a key. Returns when it waits and no step is left, so that all
    /// has been done and drawn, or when the screens have ended; tells how they have. A later call
    /// shows the screen of `screen_state` as on a new visit. The test fails if steps are left.
    WizardEnd play(const std::vector<Step>& steps, const Caller& caller = Caller::here());

    /// Does the same with something else than the screens, which the wizard shows.
    void playWith(const std::function<void()>& work, const std::vector<Step>& steps,
                  const Caller& caller = Caller::here());

    /// What the terminal shows.
    ScreenImage image() { return terminal.image(); }

    /// The words in the frame on the screen, with a space after each.
    std::string words();

    /// Gives the terminal a new size and has the wizard notice: for a step.
    void resize(const Size& size);

    CursesTerminal terminal;

    /// For what is to happen in a sleep; those at keys are the steps'.
    Waits waits;

  private:
    void takeStep();

    std::deque<Step> script;
};

/// Steps one after the other.
std::vector<Step> operator+(std::vector<Step> first, const std::vector<Step>& then);

/// Keys that replace whatever stands in a field by `text`.
std::string retyped(const std::string& text);

/// Steps that select the row `down` below the one under the bar of a listener's screen, enter a
/// port there, and press "OK".
std::vector<Step> answer_listener(int down, const std::string& port);

/// The rows of the listeners' screens in the usual setup.
constexpr int row_lo = 1;
constexpr int row_eth0 = 2;

/// 50 characters that tell where they have been cut.
constexpr char fifty_characters[] = "0123456789abcdefghijABCDEFGHIJ9876543210jihgfedcba";
