#pragma once

#include <string>

/// What the preloaded library is told by the environment, and what it tells in return. Only the
/// wizard, cp and rm are watched, and only their calls about the files of this system.

/// The file that every call is written down in, one a line: "+" for a call that changes files or
/// "-", the process's name, the call, what it is about.
constexpr const char* call_log = "/run/scratch/calls";

/// The variable with one of these orders:
///
/// "fail COUNT CALL": the COUNT-th call whose line in the log is CALL (without the sign) fails with
/// EIO; read(2) and write(2) of an open stream likewise.
///
/// "kill COUNT WHOM": just before the COUNT-th changing call somebody gets SIGKILL: `all`, the
/// wizard and whoever makes the call; `halfway`, the same but in the middle of a call that writes;
/// `wizard` or `child` alone.
constexpr const char* order_variable = "TELUMA_SHIM_ORDER";

/// How a call is to go.
enum class Course { as_ever, fails, half_way };

/// Writes a call down, one that `changes` files or not, and returns how it is to go, with errno set
/// where it fails; does not return where the process is to die. Nothing but "write" goes half-way:
/// it writes half of its bytes and then says die(). `object` is what the call is about.
Course meet(const std::string& call, const std::string& object, bool changes);

/// Ends the wizard and this process by SIGKILL.
[[noreturn]] void die();

/// The name that a descriptor was opened by; empty where it has none.
std::string name_of(int descriptor);

/// Whether the calls of this process are watched.
bool is_watched_process();

/// Whether they are and `path` is one of the files of this system.
bool is_watched(const std::string& path);
