#include "fuzz/rewriting.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "fuzz/target.h"
#include "tests/apply/working_directory.h"
#include "tests/support/files.h"

namespace {

constexpr std::size_t longest_piece = 255;

// Into the same file, as cp does, but without making it empty first: some file systems then write
// to the disk at once.
void put(const std::string& path, const std::string& content) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const auto size = static_cast<off_t>(content.size());
    require(write(file, content.data(), content.size()) == size && ftruncate(file, size) == 0 &&
                close(file) == 0,
            "the file can be written");
}

}  // namespace

std::string rewritten(const std::string& content, const std::function<void(FileRewrite&)>& work) {
    static const WorkingDirectory directory;
    const std::string path = directory / "file";
    put(path, content);
    std::string copy;
    {
        FileRewrite rewrite(path.c_str());
        require(rewrite.isOpen(), "the file can be rewritten");
        work(rewrite);
        std::fflush(nullptr);
        copy = read_file("temp.cfg");
    }
    require(!exists("temp.cfg"), "no working copy is left");
    return copy;
}

std::vector<std::string> pieces_of(const std::string& content) {
    std::vector<std::string> pieces;
    for (std::size_t at = 0; at < content.size(); at += pieces.back().size()) {
        const std::string most = content.substr(at, longest_piece);
        pieces.push_back(most.substr(0, most.find('\n') + 1));
        if (pieces.back().empty()) pieces.back() = most;
    }
    return pieces;
}

bool ends_with_whole_piece(const std::vector<std::string>& pieces) {
    return !pieces.empty() &&
           (pieces.back().back() == '\n' || pieces.back().size() == longest_piece);
}
