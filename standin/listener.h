#pragma once

#include <string>

#include "wizard/system/descriptor.h"

namespace standin {

/// Opens a listening socket at `address` ("HOST:PORT"; port 0 takes a free one) and sets `address`
/// to where it really listens. Returns a closed one, with the reason in `problem`, when that can't
/// be done.
Descriptor open_listener(std::string& address, std::string& problem);

/// Accepts the next client, in non-blocking mode and with small writes sent at once. Returns a
/// closed one when none is waiting any more.
Descriptor accept_client(const Descriptor& listener);

}  // namespace standin
