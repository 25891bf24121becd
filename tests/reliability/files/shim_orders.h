#pragma once

#include <string>

/// What the preloaded library is told by the environment, and what it tells in return.
///
///     TELUMA_SHIM_LOG    the file that every call is written down in, one a line: "+" for a call
///                        that changes files or "-", the process's name, the call, what it is about
///     TELUMA_SHIM_FAULT  ERRNO COUNT CALL: the COUNT-th call whose line in the log is CALL
///     (without
///                        the sign) fails so; read(2) and write(2) of an open stream likewise
///     TELUMA_SHIM_KILL   COUNT WHOM: just before the COUNT-th changing call somebody gets SIGKILL:
///                        `all`, the wizard and whoever makes the call; `halfway`, the same but in
///                        the middle of a call that writes; `wizard` or `child` alone
///
/// Only the wizard, cp and rm are watched, and only their calls about the files of this system.

/// What a call does to files.
enum class Effect { none, changes, writes };

/// How a call is to go.
struct Orders {
    int failure;    // the errno it fails with; 0: it is made
    bool half_way;  // it writes half of its bytes and then says die()
};

/// Writes a call down and returns how it is to go; does not return where the process is to die.
/// `object` is what the call is about; calls about files that are none of ours have no orders.
Orders meet(const char* call, const std::string& object, Effect effect);

/// Sets errno to the failure that is ordered; returns whether one is.
bool set_failure(const Orders& orders);

/// Ends the wizard and this process by SIGKILL.
[[noreturn]] void die();

/// The name that a descriptor was opened by; empty where it has none.
std::string name_of(int descriptor);

/// Whether the calls of this process are watched.
bool is_watched_process();

/// Whether they are and `path` is one of the files of this system.
bool is_watched(const std::string& path);
