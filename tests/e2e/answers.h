#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/support/expected_wire.h"
#include "tests/support/screen_table.h"

/// What a test answers on the screen of a listener.
struct ListenerAnswer {
    int row = 0;            // of the list of interfaces; 0 is "all"
    std::string port = {};  // empty: the port that stands there
    bool loopback = false;  // the row is a loopback interface: the question is answered with "Yes"
};

/// What a test answers on all screens. As it stands: the answers that a user gives who presses
/// "Next" all the way, with passwords typed.
struct Answers {
    std::string password = "Adm1n secret";
    std::string domain = {};    // empty: the domain that stands there, at first "localdomain"
    std::string location = {};  // empty: the location that stands there, at first the domain's
    std::string postmaster_password = "P0stmaster";
    std::vector<bool> aliases = {true, true, true};
    std::vector<bool> services = {true, true, true};  // POP3, IMAP, WebMail
    std::map<Stop, ListenerAnswer> listeners = {};    // others stay as they are
    std::vector<bool> relay = {};                     // further networks stay as they are
    bool sendmail = true;

    /// False for the listeners of services that are not chosen.
    bool visit(Stop stop) const;

    ListenerAnswer listener(Stop stop) const;
};

/// What the server is told of them on the sandbox's usual host: "all", lo, eth0 and eth1.
WireAnswers wire_answers(const Answers& answers);
