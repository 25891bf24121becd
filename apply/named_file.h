#pragma once

#include <sys/stat.h>

#include <string>

#include "wizard/base/descriptor.h"

/// What is behind a name that root is about to rewrite, to give away or to believe. Whoever may
/// write to a directory on the way can exchange what stands there at any moment, so a path is
/// walked name by name on open descriptors, and what counts is the descriptor that comes out of it.
///
/// A symbolic link is followed only if it belongs to root, or to the wizard's own user, and stands
/// in a directory of theirs that neither its group nor others may write to, as they may to /tmp.
/// Root's group is no exception: the rights of an access control list show as the group's.

/// Opens the regular file that `path` names, with the access mode `flags` of open(2) and
/// close-on-exec, without waiting for a pipe or a device. Where somebody else has a lease on it,
/// asks it back for five seconds, letting signals in. Returns an empty descriptor, and errno, when
/// it can't be opened, is not a regular file, or is reached over a link that is not followed; errno
/// is EMLINK for a file with several names where somebody other than root may have made this one.
Descriptor open_named_file(const char* path, int flags);

/// Opens the directory that `path` names; the same for the rest.
Descriptor open_named_directory(const std::string& path);

/// Whether `descriptor` has open what these facts, of stat(2), are of.
bool is_open_as(const struct stat& facts, int descriptor);

/// Whether `path` still leads, over such links only, to the file that `descriptor` has open.
bool leads_to(const char* path, int descriptor);

/// The same, and the file itself, not a link to it, stands in the directory named `directory`.
bool leads_into(const char* path, int descriptor, const std::string& directory);

/// The directory part of `path`: what is before its last slash, "." where there is none.
std::string directory_of(const std::string& path);
