#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/screens/wizard_rig.h"
#include "tests/support/screen_table.h"
#include "wizard/base/wizard_settings.h"

constexpr Size smallest = {20, 72};
constexpr Size usual = {24, 80};
constexpr Size large = {60, 200};
// Of which a frame that leaves a row over elsewhere leaves none, and the other way round.
constexpr Size odd = {25, 81};

/// A control of a screen: how a test calls it and its focus number.
struct ControlFacts {
    std::string name;
    int focus;
    bool is_button = false;
};

/// A screen in the rig's usual setup, the domain being "example.com".
struct ScreenFacts {
    int state;
    int rows;                            // of its frame
    int cols;                            // of its frame
    int centring_rows;                   // the height by which the frame is centred
    std::vector<ControlFacts> controls;  // in TAB order
    std::string name = facts_of(stop_at(state)).name;
    std::string title = facts_of(stop_at(state)).title;

    int controlCount() const { return static_cast<int>(controls.size()); }
};

/// All screens, 0 to 10.
const std::vector<ScreenFacts>& all_screens();

/// A screen with the focus on one of its controls.
struct ScreenView {
    const ScreenFacts* screen;
    int tabs;  // from the first control to the one that has the focus
    std::string name = screen->name + "_on_" + control().name;

    const ControlFacts& control() const { return screen->controls[static_cast<size_t>(tabs)]; }

    /// What to type to bring the focus there.
    std::string keys() const { return std::string(static_cast<size_t>(tabs), '\t'); }
};

/// Each screen with the focus on each of its controls.
std::vector<ScreenView> all_views();

/// Goes to a view that the wizard is to show, the domain being "example.com".
void enter(const ScreenView& view);

/// What the wizard shows of a screen that has been entered with the focus there already.
ScreenImage drawn(const ScreenView& view, const Size& size = usual);

/// A picture of a screen on a terminal of the usual size, moved to where another size puts it.
ScreenImage moved(const ScreenImage& picture, const ScreenFacts& screen, const Size& size);

/// A listener of the server as its screen has to be.
struct ListenerFacts {
    std::string name;
    int state;  // the screen after it, while all services are enabled, is that of the next state
    int WizardSettings::*interface_index;
    int WizardSettings::*port;

    bool isWebadmin() const { return name == "WebAdmin"; }
    std::string title() const { return title_of(stop_at(state)); }
    int defaultPort() const { return std::stoi(facts_of(stop_at(state)).port); }
};

/// WebAdmin, SMTP, POP3, IMAP, WebMail.
const std::vector<ListenerFacts>& all_listeners();
