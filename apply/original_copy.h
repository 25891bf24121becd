#pragma once

/// Leaves a copy of the file that `file` has open beside the name `path` that led to it, as
/// PATH.beforewizard, with the same bytes, owner and mode but without the set-user-ID and
/// set-group-ID bits, unless there is one: the first copy, of the file as it was before the wizard
/// ever changed it, stays. The copy gets its name only when all of it is on the disk; signals are
/// let in while it is made, and an end of the program takes what there is of it away. Returns 0
/// when the copy is there; 1 when it could not be made, or when something else has its name: a
/// link, a pipe, a directory or a second name of the file itself, none of which is touched.
int keep_copy_beside(int file, const char* path);
