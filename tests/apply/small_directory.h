#pragma once

/// Goes to an empty directory in which files can take 4096 bytes in all, for the rest of the
/// process; needs a sandbox.
void go_to_small_directory();
