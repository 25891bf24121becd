#include "tests/apply/small_directory.h"

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/descriptor.h"

void go_to_small_directory() {
    const char* const path = "/run/scratch/small";
    checked(mkdir(path, 0700), "mkdir");
    checked(mount("none", path, "tmpfs", 0, "size=4096"), "mount");
    checked(chdir(path), "chdir");
}
