#pragma once

#include <sys/types.h>

#include <string>

/// Shortcuts for files. What cannot be done throws std::system_error with the path.

/// The whole content of a file.
std::string read_file(const std::string& path);

/// Makes or replaces a file, with exactly the permission bits `mode`.
void write_file(const std::string& path, const std::string& content, mode_t mode = 0644);

/// Whether anything stands at the path, a dangling link included.
bool exists(const std::string& path);

/// What a symbolic link points to.
std::string link_target(const std::string& path);

/// What stands at a path, which is not followed if it is a link.
struct FileFacts {
    bool is_link;
    bool is_directory;
    mode_t mode;  // the permission bits, as 04755
    uid_t owner;
    gid_t group;
    off_t size;  // bytes
};

FileFacts file_facts(const std::string& path);

/// How many private directories of wizards stand below a directory.
long private_directories(const std::string& parent);

/// A new directory of mode 700 below $TMPDIR or /tmp, which goes with the object.
class TempDir {
  public:
    /// Throws std::system_error.
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& path() const { return directory; }

    /// The path of a name inside: `dir / "teluma.cfg"`.
    std::string operator/(const std::string& name) const { return directory + "/" + name; }

  private:
    std::string directory;
};
