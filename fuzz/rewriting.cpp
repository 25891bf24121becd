#include "fuzz/rewriting.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstring>

#include "apply/shell_command.h"
#include "fuzz/require.h"
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

// The linker puts this in the place of run_file_command() (ld(1), --wrap).
int run_without_shell(const ShellCommand& command,
                      int only) __asm__("__wrap__Z16run_file_commandRK12ShellCommandi");

int run_without_shell(const ShellCommand& command, int /*only*/) {
    const std::string text = command.text;
    const std::string copy = "cp temp.cfg ";
    const std::string behind = " >> /dev/null";
    require(text.size() > behind.size() &&
                text.compare(text.size() - behind.size(), behind.size(), behind) == 0,
            "the output of a command goes to /dev/null");
    if (text.compare(0, copy.size(), copy) == 0)
        put(text.substr(copy.size(), text.size() - copy.size() - behind.size()),
            read_file("temp.cfg"));
    else
        require(text == "rm temp.cfg >> /dev/null" && unlink("temp.cfg") == 0,
                "the working copy is copied back or removed");
    return 0;
}

// The original that is kept beside the file would be written to the disk for every input.
RewrittenFile::RewrittenFile() {
    write_file(path() + ".beforewizard", "");
}

void RewrittenFile::fill(const std::string& content) {
    put(path(), content);
}

std::string RewrittenFile::content() const {
    require(!exists("temp.cfg"), "no working copy is left");
    return read_file(path());
}

std::vector<std::string> pieces_of(const std::string& content) {
    std::vector<std::string> pieces;
    for (std::size_t at = 0; at < content.size(); at += pieces.back().size()) {
        const std::string most = content.substr(at, longest_piece);
        pieces.push_back(most.substr(0, most.find('\n') + 1));
        if (pieces.back().empty())
            pieces.back() = most;
    }
    return pieces;
}

bool ends_with_whole_piece(const std::vector<std::string>& pieces) {
    return !pieces.empty() &&
           (pieces.back().back() == '\n' || pieces.back().size() == longest_piece);
}
