#pragma once

#include <string>
#include <vector>

#include "wizard/base/relay_networks.h"
#include "wizard/base/tel_help.h"

class FileRewrite;

/// Lets the hosts of some networks relay mail: appends a method to the server's SMTP filters script
/// that allows remote delivery for them, and has every EHLO event of the script call it. `indices`
/// are `count` places in the host's list of networks, which is built anew. Does nothing for none.
/// A relative path is meant from where the wizard was started. The script is then given to the
/// server's account. Returns 0; 1 when the server does not tell the script's path, or names a file
/// that only a server of root's may name (any but the account's own and those beside its
/// configuration, its pid file and its domains), a file can't be opened, read or written, or the
/// owner can't be changed, in which case the script has been replaced nonetheless.
int relay_write_filter(const int* indices, int count);

/// The condition under which remote delivery is then allowed, the networks from the last to the
/// first.
std::string relay_condition(const std::vector<relay_network>& networks);

/// Writes the working copy of the script: the call after every line of an EHLO event, and the
/// method at the end.
void relay_rewrite(FileRewrite& script, const std::string& condition);
