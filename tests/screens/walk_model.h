#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/screens/screen_facts.h"

/// Keys of the model besides characters.
constexpr int model_up = 256;
constexpr int model_down = 257;
constexpr char model_erase = '\x7f';

/// What the question screens do, told plainly: no terminal and no widgets, only what a key changes
/// and what is to be read on the screen then. Begins as WizardRig does in its usual setup.
struct WalkModel {
    explicit WalkModel(int state);

    /// Takes a key: a character ('\n' for Enter), or one of the above.
    void press(int key);

    /// Texts that are all to be seen.
    std::vector<std::string> shown();

    /// The control that has the keyboard, and how many TABs lead from it to the one that goes on.
    const ControlFacts& control();
    int tabsToNext();

    /// The text in the control that has the keyboard, null where it is no field.
    std::string* field();

    int state() const { return dialog != 0 ? dialog : screen; }
    /// Those of SMTP, POP3, IMAP and WebMail share one.
    int& focus(int state) {
        return focusNumbers[state >= state_pop3 && state <= state_webmail ? state_smtp : state];
    }

    WizardSettings settings = {};
    bool port_77_is_taken = false;     // on all interfaces
    int apply_leads_to = state_relay;  // the screen of the step that fails
    int applied = 0;                   // how often the answers were applied

  private:
    const ScreenFacts& facts() const { return all_screens()[static_cast<size_t>(screen)]; }
    bool isListener() const { return facts().title.find("Interface") != std::string::npos; }
    const ListenerFacts& listener() const;
    std::string& port() { return texts[listener().name + std::to_string(bars[screen])]; }
    void closeDialog();
    void pressInList(int key);
    void pressButton();
    void storeTicks();
    void checkPasswords();
    void checkDomain();
    void checkPort();
    void acceptPort();
    void leave(int to, int refocused);
    void show();
    void open(int dialog_state, const std::string& text, int new_focus);
    void followDomain();
    int neighbour(bool forwards) const;

    int screen;
    int dialog = 0;
    std::string dialogText;
    bool onSecondButton = false;
    int focusAfterwards = 0;
    int typedPort = 0;
    int focusNumbers[screen_count] = {};
    std::map<std::string, std::string> texts = {{"domain", "localdomain"}};
    bool locationIsEdited = false;
    std::map<int, int> bars;                 // by state
    std::map<int, std::vector<bool>> ticks;  // by state
};
