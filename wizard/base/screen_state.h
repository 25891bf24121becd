#pragma once

/// Values of `screen_state`: the screens in the order of the walk, then what can stand on top of
/// them. A dialog keeps the value that it found and puts it back when it closes, so that a redraw
/// after a resize knows what is on top.
enum ScreenState {
    state_password = 0,
    state_domain = 1,
    state_aliases = 2,
    state_webadmin = 3,
    state_smtp = 4,
    state_services = 5,
    state_pop3 = 6,
    state_imap = 7,
    state_webmail = 8,
    state_relay = 9,
    state_sendmail = 10,
    screen_count = 11,

    state_message = 100,
    state_yes_no = 101,
    state_pending = 102,
    state_end = 103,  ///< leaves the screen sequence
    state_retry_back = 104
};

/// How the wizard has ended.
enum class WizardEnd {
    not_yet,
    completed,      ///< everything has been applied
    left,           ///< by the "Exit" button
    without_login,  ///< the server did not let the wizard in
    out_of_memory
};

/// Where the user is.
struct ScreenPlace {
    int state = state_password;
    int focus[screen_count] = {};  ///< by state; read through screen_focus()
};

inline ScreenPlace screen_place;

/// What is on the screen now, a ScreenState.
inline int& screen_state = screen_place.state;

/// The focus number of the screen of a state 0 to 10: which of its controls has the keyboard, 0 for
/// the first. The SMTP, POP3, IMAP and WebMail states share one.
inline int& screen_focus(int state) {
    const bool shares_focus = state == state_pop3 || state == state_imap || state == state_webmail;
    return screen_place.focus[shares_focus ? state_smtp : state];
}
