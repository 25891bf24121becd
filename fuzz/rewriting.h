#pragma once

#include <functional>
#include <string>
#include <vector>

#include "apply/file_rewrite.h"

/// What a file of this content becomes when it is rewritten as far as its working copy, without a
/// shell. Requires that no working copy is left. The current directory becomes one for the file.
std::string rewritten(const std::string& content, const std::function<void(FileRewrite&)>& work);

/// A file in the pieces in which the wizard reads it: lines, those over 255 bytes in parts.
std::vector<std::string> pieces_of(const std::string& content);

/// Whether the wizard learns only from one more read, which fails, that these pieces are all: it
/// then looks at the last one again.
bool ends_with_whole_piece(const std::vector<std::string>& pieces);
