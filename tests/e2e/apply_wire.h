#pragma once

#include <string>
#include <vector>

#include "tests/e2e/answers.h"

/// What the wizard has to say to the server, line by line, for the sandbox's usual interfaces
/// ("all", lo, eth0, eth1) and the sample configuration's listeners.
using Commands = std::vector<std::string>;

/// How the default run creates its domain.
constexpr const char* create_localdomain =
    "create domain name localdomain domainlocation /var/opt/teluma/domains/localdomain/ "
    "postmasterpasswd P0stmaster";

Commands operator+(Commands left, const Commands& right);

/// All of a run in which nothing fails, on the usual three networks: "-A PASSWORD" first.
Commands run_commands(const Answers& answers);

/// The commands as they are when the listeners of these ports have got their new address, "all",
/// already and so have that one removed.
Commands with_new_listeners(Commands commands, const std::vector<std::string>& ports);

/// Where the `count`th `command` stands, counted from 1. std::runtime_error if there are fewer.
size_t index_of(const Commands& commands, const std::string& command, int count = 1);

/// The commands from index `from` up to, but without, index `end`.
Commands part_of(const Commands& commands, size_t from, size_t end);
