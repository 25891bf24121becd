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

/// One question screen: a row of the table of all screens. A new one needs a ScreenState, a row, a
/// function here that makes it, and its file.
struct ScreenRow {
    int state;
    const char* title;
    std::unique_ptr<Screen> (*create)(int state);  ///< builds it, on top of the panel stack
    int next;                                      ///< where "Next" leads, see next_screen_state()
    int back;
    Hidden hidden = Hidden::stays;

    /// Shows the screen, which is built if need be, until a button has been pressed. Returns
    /// whether that was the wizard's end.
    WizardEnd operator()() const;
};

/// All screens, each in the place of its state. SMTP, POP3, IMAP and WebMail share the code of one
/// screen, and its focus number.
extern const ScreenRow screen_table[screen_count];

/// The screens that are built, by state; null for the others.
extern std::unique_ptr<Screen> built_screens[screen_count];

/// The screen of `state`, which is built, hidden, if it was not. Curses and `main_window` must be
/// there.
Screen& built_screen(int state);

/// Shows the screen that `screen_state` names, again and again, until that is state_end or a screen
/// has ended the wizard. Returns how the wizard has ended.
WizardEnd run_screens();

/// Where "Next" leads from the screen of `state` (0 to 9). The sendmail screen has no next screen.
int next_screen_state(int state);

/// Where "Back" leads from the screen of `state` (1 to 10).
int previous_screen_state(int state);

/// Where the walk goes on from SMTP (4): to the services screen; from there (5) or from a listener
/// screen (6 to 8): to the next enabled one of POP3, IMAP and WebMail, or to the relay screen.
int next_listener_state(int state);

/// Where it goes back to from SMTP (4): to WebAdmin; from a listener screen (6 to 8) or the relay
/// screen (9): to the enabled one of POP3, IMAP and WebMail before it, or to the services screen.
int previous_listener_state(int state);

/// After the terminal has been resized: redraws the screen on show, if no dialog is on top, and
/// puts those in their places that are placed at every resize. Each of them forgets a key, also
/// before its first visit, which builds it.
void redraw_screens();

/// Releases every screen that is built.
void destroy_screens();

/// The administrator password, typed twice; the only screen with an "Exit" button.
std::unique_ptr<Screen> password_screen_build(int state);

/// The primary domain, where the server keeps it, and its postmaster's password.
std::unique_ptr<Screen> domain_screen_build(int state);

/// Which standard aliases the domain gets. The choices are kept whichever way the user leaves.
std::unique_ptr<Screen> alias_screen_build(int state);

/// The interface and the port of a listener of the server.
std::unique_ptr<Screen> listener_screen_build(int state);

/// Which of POP3, IMAP and WebMail to enable; all are ticked at first. Only "Next" stores the
/// choices, the check boxes keep what was ticked either way.
std::unique_ptr<Screen> services_screen_build(int state);

/// Which of the host's networks may relay mail without authentication; all are ticked at first. The
/// choices are kept whichever way the user leaves.
std::unique_ptr<Screen> relay_screen_build(int state);

/// Whether the server's sendmail wrapper replaces the system's sendmail. "Yes" and "No" store the
/// answer and apply all of the settings.
std::unique_ptr<Screen> sendmail_screen_build(int state);
