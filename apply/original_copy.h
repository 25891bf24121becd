#pragma once

/// Leaves a copy of the file `path` beside it, as PATH.beforewizard, with the same bytes, owner and
/// mode, unless there is one: the first copy, of the file as it was before the wizard ever changed
/// it, stays. The copy gets its name only when all of it is on the disk. Returns 0 when the copy is
/// there, else 1.
int keep_original(const char* path);
