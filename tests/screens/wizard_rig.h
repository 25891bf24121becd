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

/// A network interface as its row shows it.
struct InterfaceFacts {
    std::string name;
    std::string address;
};

/// A network of the relay screen.
struct NetworkFacts {
    std::string network;
    std::string netmask;
};

/// The terminal and the host that the wizard finds.
struct RigSetup {
    int rows = 24;
    int cols = 80;
    /// The rows of the listener screens, that for all interfaces included. All addresses are this
    /// machine's own, so that a port probe stays in it.
    std::vector<InterfaceFacts> interfaces = {
        {"all", "0.0.0.0"}, {"lo", "127.0.0.1"}, {"eth0", "127.0.0.2"}};
    std::vector<NetworkFacts> networks = {
        {"127.0.0.0", "255.0.0.0"}, {"192.168.1.0", "255.255.255.0"}, {"10.20.0.0", "255.255.0.0"}};
};

/// One thing that happens while the wizard waits for a key: a key is pressed, a text (or several
/// keys, "\t" and the like) is typed, or a function is called.
using Step = std::variant<Key, std::string, std::function<void()>>;

/// The wizard with its screens, as start-up leaves it, on a terminal of its own. All that belongs
/// to the process starts from the beginning: settings, states, focus numbers, the host's networks.
class WizardRig {
  public:
    /// The wizard will begin with the screen of `state`.
    explicit WizardRig(int state, const RigSetup& setup = {});
    ~WizardRig();
    WizardRig(const WizardRig&) = delete;
    WizardRig& operator=(const WizardRig&) = delete;

    /// Runs the screens from the one that `screen_state` names, doing the next of the steps
    /// whenever the wizard waits for a key. Returns when it waits and no step is left, so
    /// everything that the last step led to has been done and drawn, or when the screens have
    /// ended; tells how they have. A later call shows the screen of `screen_state`, which the test
    /// may have changed, as on a new visit. The test ends as failed if steps are left.
    WizardEnd play(std::vector<Step> steps, const Caller& caller = Caller::here());

    /// What curses believes to be on the terminal, and what a terminal shows.
    ScreenImage image() { return terminal.image(); }
    ScreenImage terminalImage() { return terminal.terminalImage(); }

    /// All that has been written to the terminal.
    std::string outputBytes() { return terminal.outputBytes(); }

    /// Gives the terminal a new size and has the wizard notice: for a step.
    void resize(int rows, int cols);

    /// For what is to happen in a sleep; those at keys are the steps'.
    Waits waits;

  private:
    void takeStep();

    CursesTerminal terminal;
    std::deque<Step> script;
};

/// Puts the answer of the domain screen that the alias screen names into the settings.
void answer_domain(const std::string& domain);

/// Steps one after the other.
std::vector<Step> operator+(std::vector<Step> first, const std::vector<Step>& then);

std::string without_blanks_at_end(std::string text);
