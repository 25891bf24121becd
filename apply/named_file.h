#pragma once

#include <sys/stat.h>

#include <string>

#include "wizard/base/descriptor.h"

/// What is behind a name that root is about to rewrite, to give away or to believe. Whoever may
/// write to a directory on the way can put links, other people's files, pipes and devices there, at
/// any moment, so a path is walked name by name on open descriptors, and what counts is the
/// descriptor that comes out of it.
///
/// A symbolic link is followed only if it belongs to root, or to the wizard's own user, and stands
/// where only root can write: in a directory of theirs that neither its group nor others may write
/// to. The group's right counts for any group, root's too: an access control list shows there.
/// /tmp is a directory that others can write to.

/// Opens the regular file that `path` names, with the access mode `flags` of open(2) and
/// close-on-exec. Never waits for a pipe or a device. Where somebody else has a lease on the file
/// it asks for it back for five seconds, letting signals in. Returns an empty descriptor, and
/// errno, when the name leads over a link that is not followed or to anything but a regular file,
/// or when it can't be opened; errno is EMLINK for a file that has several names, one of them where
/// somebody other than root can write, who may have made it.
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
