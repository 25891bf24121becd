#pragma once

#include <cstddef>
#include <string>

/// The longest shell command, in characters. A longer one is not run, let alone cut short.
constexpr std::size_t shell_command_limit = 255;

/// Has /bin/sh run a command of the server's, in the directory that the wizard was started in, and
/// waits for its end, letting signals in. Returns its wait status (waitpid(2)), or -1 when it is
/// too long or there is no process to be had for it.
int run_server_command(const std::string& command);

/// The same in the current directory for a command that changes files. A key that interrupts the
/// wizard does not reach it: it is not cut off half way. Unless `only` is -1 the command can write
/// to nothing but the file that this descriptor has open, whatever has come in the place of a name,
/// where the system can see to that (confine_writing_in_child()).
int run_file_command(const std::string& command, int only = -1);

/// `text` so that between double quotes the shell takes every character as it stands: a backslash
/// before each of " $ ` and \ (sh(1), Double Quotes).
std::string in_double_quotes(const char* text);

/// The file name `name` as one word of a shell command: itself where it has only characters without
/// a meaning to the shell, else in single quotes; "./" before a name that begins with "-".
std::string as_shell_word(const char* name);
