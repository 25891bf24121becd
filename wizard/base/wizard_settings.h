#pragma once

#include "wizard/base/relay_networks.h"

/// Indices into `service_enabled`.
enum OptionalService { service_pop3 = 0, service_imap = 1, service_webmail = 2 };

constexpr int optional_service_count = 3;

/// Every answer that the screens take and the apply sequence reads, and how far the apply sequence
/// has come. It is never reset: going back keeps every answer, but for passwords that are applied.
/// Texts are NUL-terminated and cut at their buffers' limits. An interface is an index into the
/// interface table, 0 for all of them.
struct WizardSettings {
    char admin_password[51];
    char primary_domain[751];  ///< also where the default of the domain's location is put together
    char domain_location[751];
    char postmaster_password[50];

    unsigned char alias_root_to_postmaster = 1;
    unsigned char alias_localhost = 1;
    unsigned char alias_localhost_localdomain = 1;

    int webadmin_interface;
    int webadmin_port;
    int smtp_interface;
    int smtp_port = 25;
    int pop3_interface;
    int pop3_port = 110;
    int imap_interface;
    int imap_port = 143;
    int webmail_interface;
    int webmail_port = 80;

    unsigned char service_enabled[optional_service_count];  ///< see OptionalService

    unsigned char relay_ticks[relay_list_size];  ///< one per network of the relay network list
    int relay_selected[104];                     ///< indices of the ticked networks, in list order
    int relay_selected_count;

    int sendmail_wrapper;  ///< non-zero: put the server's sendmail in place of the system's

    // A step that has succeeded is not done again when the user comes back after a failure.
    int done_password;
    int done_login;
    int done_domain;
    unsigned char done_aliases;
    int done_webadmin;
    int done_smtp;
    int done_services;
    int done_relay;
    int done_sendmail;

    unsigned char apply_running;  ///< 1 once the apply sequence has started
};

inline WizardSettings wizard_settings{};
