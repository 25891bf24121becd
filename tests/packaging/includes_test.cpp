// What some systems' headers bring along and others' do not is included where it is used.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "tests/support/files.h"

namespace {

struct NeededHeader {
    const char* used;  // a regular expression
    const char* header;
};

const NeededHeader needed_headers[] = {
    {R"(\bAF_INET\b)", "#include <sys/socket.h>"},
    {R"(\bFD_ZERO\b)", "#include <cstring>"},  // which calls memset() on SunOS
};

// Counts the uses in a source, each of which has its header.
size_t checked_uses(const std::string& path) {
    const std::string source = read_file(path);
    size_t uses = 0;
    for (const NeededHeader& needed : needed_headers) {
        if (!std::regex_search(source, std::regex(needed.used)))
            continue;
        ++uses;
        EXPECT_TRUE(source.find(needed.header) != std::string::npos)
            << path << " lacks " << needed.header;
    }
    return uses;
}

TEST(Includes, name_what_only_some_systems_bring_along) {
    const std::filesystem::path sources = SOURCES;
    size_t uses = 0;
    for (const char* folder : {"wizard", "ui", "screens", "apply"}) {
        for (const auto& entry : std::filesystem::directory_iterator(sources / folder)) {
            if (entry.is_regular_file())
                uses += checked_uses(entry.path());
        }
    }
    EXPECT_GT(uses, 2U);
}

}  // namespace
