#pragma once

#include <string>

/// A new directory of mode 700 under $TMPDIR or /tmp, removed with all that is in it when the
/// object goes.
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
