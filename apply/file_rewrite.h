#pragma once

#include <cstdio>
#include <memory>
#include <string>

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// A stream that its owner closes.
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Opens the file `path`, which is to be rewritten, for reading and writing, if it may be
/// (open_named_file()); null, and errno, when not.
File open_original(const char* path);

/// Leaves a copy of the file that `file` has open beside the name `path` that led to it, as
/// PATH.beforewizard, of the same bytes, owner and mode but for set-user-ID and set-group-ID. One
/// that is there stays: it is of the file as it was before the wizard ever changed it. It gets its
/// name when all of it is on the disk; signals are let in while it is made, and an end of the
/// program takes away what there is of it. Returns 0 when it is there; 1 when it could not be made,
/// or when its name is a link's, a pipe's, a directory's or a second one of the file itself, none
/// of which is touched.
int keep_copy_beside(int file, const char* path);

/// One rewriting: what the file is to become is written into the working copy "temp.cfg" in the
/// current directory, which is copied over the file in the end.
class FileRewrite {
  public:
    /// Opens the file, whose name must stay alive, and makes the working copy, readable by nobody
    /// else, in a new private directory where the current one has been removed.
    explicit FileRewrite(const char* file_name);

    /// Takes the working copy away.
    ~FileRewrite();

    /// False when the file can't be opened, or there is something of the copy's name already.
    bool isOpen() const { return copy != nullptr; }

    /// The descriptor of the file, which stays this object's.
    int file() const { return fileno(original.get()); }

    /// False once the end of the file, or an error, has been met.
    bool goesOn() const { return !std::feof(original.get()) && !std::ferror(original.get()); }

    /// Reads up to and including the next line feed, at most 255 bytes: a longer line comes in
    /// pieces. It may hold zero bytes. Lets signals in before, as a file may have lines for
    /// minutes. Returns false, with `line` as it was, when nothing could be read.
    bool read(std::string& line);

    /// Adds to the working copy. Whether that has failed is known to install().
    void write(const std::string& text) { std::fwrite(text.data(), 1, text.size(), copy.get()); }

    /// Copies the working copy over the file, whose owner and mode stay, after a copy of the file
    /// was kept beside it. Does not touch it unless all of it could be read, every byte has been
    /// written, the name fits into a command and still leads there, and that copy is kept. Returns
    /// 0; 1 when it was not touched, or when the name leads elsewhere afterwards. What the commands
    /// themselves say is not looked at.
    int install();

  private:
    const char* path;
    File original;
    File copy;
};
