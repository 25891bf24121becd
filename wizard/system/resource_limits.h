#pragma once

#include <sys/resource.h>

/// The limits of the system that the wizard has, getrlimit(2), and its child processes.

/// Sets the soft limit of `resource` (RLIMIT_NOFILE, ...), or raises it to the hard one where that
/// is lower. A limit that can't be set stays.
void change_limit(int resource, rlim_t limit);

/// In a child process: puts the limits back that the wizard was started with.
void restore_limits_in_child();

/// Whether that many files, at least one, could be opened at a time now.
bool can_open_files(int count);
