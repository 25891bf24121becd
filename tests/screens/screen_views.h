#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "tests/screens/wizard_rig.h"

/// A control of a screen: how a test calls it and its focus number.
struct ControlFacts {
    std::string name;
    int focus;
    bool is_button = false;
};

/// A screen in the rig's usual setup, the domain being "example.com".
struct ScreenFacts {
    std::string name;
    int state;
    int rows;                            // of its frame
    int cols;                            // of its frame
    int centring_rows;                   // the height by which the frame is centred
    std::vector<ControlFacts> controls;  // in TAB order

    int control_count() const { return static_cast<int>(controls.size()); }
};

/// All screens, 0 to 10.
const std::vector<ScreenFacts>& all_screens();

/// A screen with the focus on one of its controls.
struct ScreenView {
    const ScreenFacts* screen;
    int tabs;  // from the first control to the one that has the focus

    const ControlFacts& control() const { return screen->controls[static_cast<size_t>(tabs)]; }
    int focus() const { return control().focus; }
    std::string name() const { return screen->name + "_on_" + control().name; }

    /// What to type to bring the focus there.
    std::string keys() const { return std::string(static_cast<size_t>(tabs), '\t'); }
};

/// A screen, or each of them, with the focus on each of its controls; each with the focus on its
/// first; the same without POP3, IMAP and WebMail, which share the screen of SMTP.
std::vector<ScreenView> views_of(const ScreenFacts& screen);
std::vector<ScreenView> all_views();
std::vector<ScreenView> fresh_views();
std::vector<ScreenView> fresh_views_of_different_screens();

void PrintTo(const ScreenFacts& screen, std::ostream* out);
void PrintTo(const ScreenView& view, std::ostream* out);
std::string name_of_view(const testing::TestParamInfo<ScreenView>& info);

/// What the wizard shows of a screen that has been entered with the focus there already.
ScreenImage drawn(const ScreenView& view, const RigSetup& setup);
