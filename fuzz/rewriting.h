#pragma once

#include <string>
#include <vector>

#include "tests/apply/working_directory.h"

/// A file that is rewritten through a working copy, without a shell: a target that has this in it
/// wraps run_file_command().
class RewrittenFile {
  public:
    /// An empty directory, which becomes the current one, for the file.
    RewrittenFile();

    /// The path of the file.
    std::string path() const { return directory / "file"; }

    /// Gives the file a new content.
    void fill(const std::string& content);

    /// Its content. Requires that no working copy is left.
    std::string content() const;

  private:
    WorkingDirectory directory;
};

/// A file in the pieces in which the wizard reads it: lines, those over 255 bytes in parts.
std::vector<std::string> pieces_of(const std::string& content);

/// Whether the wizard learns only from one more read, which fails, that these pieces are all: it
/// then looks at the last one again.
bool ends_with_whole_piece(const std::vector<std::string>& pieces);
