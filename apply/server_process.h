#pragma once

#include <sys/types.h>

/// Stopping and starting the installed server, whose paths the selected installation profile holds.

/// The server's account, "teluma".
struct ServerAccount {
    bool exists;
    uid_t user;
    gid_t group;
};

/// Asks for it, getpwnam(3). As long as a directory service keeps the wizard waiting, signals are
/// let in. Where it can't be asked for it counts as missing.
ServerAccount find_server_account();

/// Reads the first line of the pid file as a number into `server_session.pid` and returns it.
/// Returns 1, with that as it was, when open_original() can't open the file: a file that holds 1
/// looks the same. A file that is neither root's nor the server's account's, or that somebody else
/// may have given its name, counts as -1.
int server_read_pid();

/// Sends the server SIGTERM if its process id is known; where the server's account has written that
/// into the pid file, to a process of this account's only. Returns 0, or 1 when it could not be
/// sent.
int server_stop();

/// Runs the server, which puts itself into the background. Returns 0, or 1 when it could not be
/// run; what it says itself is not looked at.
int server_start();

/// Has the server store its administrator password. Returns 0, or 1 when that could not be run or
/// the password is too long for a command.
int server_set_admin_password(const char* password);

/// Stops the running server, waits until its pid file is gone, without a limit and letting signals
/// in, sets its administrator password, which is kept for the login, makes sure that its
/// command-line interface is on and starts it again. Returns 0, or 1 when the server could not be
/// stopped, given the password or started.
int server_restart_with_password(const char* password);
