#pragma once

#include <string>

#include "wizard/base/descriptor.h"

/// One end of a TCP connection, written "HOST:PORT".
struct Address {
    std::string host;
    int port = 0;
};

/// Splits `text` at its first ":" into `address`. False, with `address` untouched, when there is no
/// host or the port is not a number of `least_port` to 65535.
bool parse_address(const std::string& text, int least_port, Address& address);

/// True when `text` is a dotted IPv4 address, ":" and a port of 1 to 65535, as a listener has it.
bool is_listener_address(const std::string& text);

/// True when two listeners can't both be opened: they have the same port, and the same host or one
/// of them 0.0.0.0. Both texts must be listener addresses.
bool listeners_collide(const std::string& one, const std::string& other);

/// True when some program on this host listens at the listener address `text` now, so that the
/// system refuses to bind it. Any other reason why it can't be bound doesn't count.
bool address_is_in_use(const std::string& text);

/// Opens a listening socket at `address` ("HOST:PORT"; port 0 takes a free one) and sets `address`
/// to where it really listens. Returns a closed one, with the reason in `problem`, when that can't
/// be done.
Descriptor open_listener(std::string& address, std::string& problem);

/// Accepts the next client, in non-blocking mode and with small writes sent at once. Returns a
/// closed one when none is waiting any more.
Descriptor accept_client(const Descriptor& listener);
