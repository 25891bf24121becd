#pragma once

#include <string>
#include <vector>

#include "tests/support/installed_server.h"

/// The answers that the server is told of, at first those of a user who keeps every default. A
/// listener is "ADDRESS:PORT", and empty where its service is not enabled.
struct WireAnswers {
    std::string password = "Adm1n secret";
    std::string domain = "example.com";
    std::string location = "/var/opt/teluma/domains/example.com/";
    std::string postmaster_password = "P0stmaster";
    bool root_alias = true;
    bool localhost_alias = true;
    bool localdomain_alias = true;
    std::string webadmin = "0.0.0.0:9000";
    std::string smtp = "0.0.0.0:25";
    std::string pop3 = "0.0.0.0:110";
    std::string imap = "0.0.0.0:143";
    std::string webmail = "0.0.0.0:80";
    bool relay = true;  // any network may relay
};

/// The server refuses this command when it comes for the `count`th time.
struct Refusal {
    std::string command;
    int count = 1;
};

/// The commands that a server with the sample configuration has to get from a wizard that applies
/// the answers and tries again until it succeeds: those of each run, "-A PASSWORD" first. A command
/// that is refused ends its run.
std::vector<Lines> expected_wire(const WireAnswers& answers, const std::vector<Refusal>& plan = {});

/// All of them one after another.
Lines joined(const std::vector<Lines>& runs);
