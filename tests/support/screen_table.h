#pragma once

#include <vector>

/// The screens in the order of the walk: each leads on to the next one, and back to the one before
/// it. The listeners of services that are not chosen are left out.
enum class Stop {
    password,
    domain,
    aliases,
    webadmin,
    smtp,
    services,
    pop3,
    imap,
    webmail,
    relay,
    sendmail,
};

constexpr int stop_count = 11;

/// The stop at a place of the walk, 0 to 10, and the place of a stop.
constexpr Stop stop_at(int place) { return static_cast<Stop>(place); }
constexpr int place_of(Stop stop) { return static_cast<int>(stop); }

/// How a test, a demonstration or a measurement knows a screen and finds its way about it.
struct StopFacts {
    const char* name;      // for the names of tests and pictures
    const char* title;     // in the frame of the screen
    const char* golden;    // its picture at first, among those of tests/screens
    const char* accepted;  // what is typed to accept all that it shows: up to the button that goes
                           // on, which Enter then presses; passwords are "secret"
    int controls;          // that TAB goes round
    int next;              // how many TABs lead from the first control to the button that goes on
    int back;              // and to the one that goes back (on the first screen "Exit")
    const char* port;      // that stands on the screen of a listener at first, else null

    /// Whether its picture depends on the interfaces of the host.
    bool showsHost() const;
};

const StopFacts& facts_of(Stop stop);

/// The title in the frame of a screen.
inline const char* title_of(Stop stop) { return facts_of(stop).title; }

std::vector<Stop> every_stop();
