#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "tests/screens/wizard_rig.h"
#include "wizard/base/wizard_settings.h"

/// A listener of the server as its screen has to be.
struct ListenerFacts {
    std::string name;
    int state;
    std::string title;
    int default_port;
    int WizardSettings::*interface_index;
    int WizardSettings::*port;
    int next_state;      // while all services are enabled
    int previous_state;  // likewise
};

void PrintTo(const ListenerFacts& listener, std::ostream* out);

/// WebAdmin; SMTP, POP3, IMAP and WebMail; all five.
const ListenerFacts& webadmin_facts();
std::vector<ListenerFacts> service_facts();
std::vector<ListenerFacts> all_listeners();

/// The wizard on the screen of a listener, all services being enabled.
class ListenerRig : public WizardRig {
  public:
    explicit ListenerRig(const ListenerFacts& listener, const RigSetup& setup = {});

    /// The answers in the settings.
    int chosenInterface() const { return wizard_settings.*facts.interface_index; }
    int chosenPort() const { return wizard_settings.*facts.port; }
    void setChosenPort(int port) { wizard_settings.*facts.port = port; }

    /// What the list and the port fields show in a row, in the usual setup, without the blanks at
    /// the end.
    std::string rowShown(int row) { return textAt(row, 26, 18); }
    std::string portShown(int row) { return textAt(row, 46, 6); }

    /// Whether the cursor stands in the port field of a row, behind `length` characters.
    bool cursorInPort(int row, int length);

  private:
    std::string textAt(int row, int col, int cols);

    const ListenerFacts facts;
};

/// The rows of the usual setup, as many "down" keys from the top.
constexpr int row_all = 0;
constexpr int row_lo = 1;
constexpr int row_eth0 = 2;

/// Steps that select the row `down` below the one under the bar, enter a port there, and press
/// "OK".
std::vector<Step> answer_listener(int down, const std::string& port);
