#pragma once

#include <functional>
#include <string>
#include <vector>

#include "apply/file_rewrite.h"
#include "tests/apply/working_directory.h"

/// A file that is rewritten as far as its working copy, without a shell.
class RewrittenFile {
  public:
    /// An empty directory, which becomes the current one, for the file.
    RewrittenFile() = default;

    /// Gives the file a new content.
    void fill(const std::string& content);

    /// Has this write the working copy.
    void rewrite(const std::function<void(FileRewrite&)>& work);

    /// What the file has become. Requires that no working copy is left.
    std::string content() const;

  private:
    WorkingDirectory directory;
    std::string rewritten;
};

/// A file in the pieces in which the wizard reads it: lines, those over 255 bytes in parts.
std::vector<std::string> pieces_of(const std::string& content);

/// Whether the wizard learns only from one more read, which fails, that these pieces are all: it
/// then looks at the last one again.
bool ends_with_whole_piece(const std::vector<std::string>& pieces);
