#pragma once

#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

/// One network listener of the server: how its screen, the progress list and the server call it,
/// and where its answers are.
struct Listener {
    int state;                 ///< the ScreenState of its screen
    const char* name;          ///< on the screens
    const char* default_port;  ///< in the port fields of its screen at first
    int WizardSettings::*interface_index;
    int WizardSettings::*port;
    const char* gives_access_to;  ///< in the question about a loopback interface, up to a tab
    const char* key;              ///< of its line in the progress list
    const char* progress;         ///< the text of that line
    const char* service;          ///< the server's name for it; null: it has commands of its own
};

/// All listeners, in the order of their screens.
inline constexpr Listener listeners[] = {
    {state_webadmin, "WebAdmin", "9000", &WizardSettings::webadmin_interface,
     &WizardSettings::webadmin_port, "WebAdmin interface ", "webadmin", "--> configuring WebAdmin",
     nullptr},
    {state_smtp, "SMTP", "25", &WizardSettings::smtp_interface, &WizardSettings::smtp_port,
     "SMTP service ", "smtp", "--> configuring SMTP", "smtp-incoming"},
    {state_pop3, "POP3", "110", &WizardSettings::pop3_interface, &WizardSettings::pop3_port,
     "POP3 service", "pop3", "--> configuring POP3", "pop3"},
    {state_imap, "IMAP", "143", &WizardSettings::imap_interface, &WizardSettings::imap_port,
     "IMAP service ", "imap", "--> configuring IMAP", "imap"},
    {state_webmail, "WebMail", "80", &WizardSettings::webmail_interface,
     &WizardSettings::webmail_port, "WebMail service ", "webmail", "--> configuring WEBMAIL",
     "webmail"},
};

inline constexpr const Listener& webadmin_listener = listeners[0];
inline constexpr const Listener& smtp_listener = listeners[1];

/// The listeners of the services that can be switched off, by OptionalService.
inline constexpr const Listener* optional_listeners = listeners + 2;
