#pragma once

#include <memory>

#include "wizard/base/screen_state.h"

class Screen;

/// What becomes of a screen after a visit.
enum class Hidden {
    stays,
    stays_in_place,  ///< every resize puts it into the middle, as if it were on show
    goes             ///< it is built anew for each visit, as its texts depend on answers
};

/// Builds the screen of `state`, on top of the panel stack. Curses and `main_window` must be there.
using ScreenBuilder = std::unique_ptr<Screen>(int state);

ScreenBuilder password_screen_build;  ///< the administrator password; has an "Exit" button
ScreenBuilder domain_screen_build;    ///< the primary domain, its place, its postmaster's password
ScreenBuilder alias_screen_build;     ///< which standard aliases the domain gets
ScreenBuilder listener_screen_build;  ///< the interface and the port of one listener
ScreenBuilder services_screen_build;  ///< which of POP3, IMAP and WebMail to enable
ScreenBuilder relay_screen_build;     ///< which networks may relay mail without authentication
ScreenBuilder sendmail_screen_build;  ///< whether to replace sendmail; applies all answers

/// One question screen. A new one needs a ScreenState, a row, a builder, and its file.
struct ScreenRow {
    int state;
    const char* title;
    ScreenBuilder* build;
    Hidden hidden = Hidden::stays;

    /// Shows the screen, which is built if need be, until a button has been pressed. Returns
    /// whether that was the wizard's end.
    WizardEnd operator()() const;
};

/// All screens, each in the place of its state, which is also their order. SMTP, POP3, IMAP and
/// WebMail share the code of one screen, and its focus number.
extern const ScreenRow screen_table[screen_count];

/// The screens that are built, by state; null for the others.
extern std::unique_ptr<Screen> built_screens[screen_count];

/// Shows the screen that `screen_state` names, again and again, until that is state_end or a screen
/// has ended the wizard. Returns how the wizard has ended.
WizardEnd run_screens();

/// Where "Next" leads from the screen of `state` (0 to 9): to the one after it, past the listeners
/// of services that are not enabled.
int next_listener_state(int state);

/// Where "Back" leads from the screen of `state` (1 to 10), likewise.
int previous_listener_state(int state);

/// After the terminal has been resized: redraws the screen on show, if no dialog is on top, and
/// puts those in their places that are placed at every resize. Each of them forgets a key, also
/// before its first visit, which builds it.
void redraw_screens();

/// Releases every screen that is built.
void destroy_screens();
