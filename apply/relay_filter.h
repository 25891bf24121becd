#pragma once

#include <string>
#include <vector>

#include "wizard/base/relay_networks.h"

class FileRewrite;

/// Lets the hosts of some networks relay mail: appends a method to the server's SMTP filters script
/// that allows remote delivery for them, has every EHLO event of the script call it, and gives the
/// script to the server's account. `indices` are `count` places in the host's list of networks,
/// which is built anew; none, and nothing is done. A relative path is meant from where the wizard
/// was started. Returns 0; 1 when the server does not tell the script's path or has no right to
/// that file, or a file can't be opened, read, written or, once that is done, given away.
int relay_write_filter(const int* indices, int count);

/// The condition for that delivery, with the networks from the last to the first.
std::string relay_condition(const std::vector<relay_network>& networks);

/// Writes the working copy of the script: the call after every line of an EHLO event, and the
/// method at the end.
void relay_rewrite(FileRewrite& script, const std::string& condition);
