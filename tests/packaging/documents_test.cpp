// The documents name what there is.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>

#include "tests/support/files.h"

namespace {

using Names = std::set<std::string>;

const std::string sources = SOURCES;

// What follows the pattern's group 1 in a text.
Names all_in(const std::string& text, const std::regex& pattern) {
    Names names;
    for (std::sregex_iterator found(text.begin(), text.end(), pattern), end; found != end; ++found)
        names.insert((*found)[1]);
    return names;
}

// The files and folders of the project that a document links to, from its own folder.
Names links_in(const std::string& document) {
    static const std::regex link(R"(\]\(([^):#]+)\))");
    return all_in(read_file(document), link);
}

Names every_document() {
    Names documents = {sources + "/README.md", sources + "/CONTRIBUTING.md"};
    for (const auto& entry : std::filesystem::directory_iterator(sources + "/docs")) {
        if (entry.path().extension() == ".md")
            documents.insert(entry.path());
    }
    return documents;
}

TEST(Documents, link_only_to_what_there_is) {
    size_t links = 0;
    for (const std::string& document : every_document()) {
        for (const std::string& link : links_in(document)) {
            ++links;
            const std::filesystem::path target =
                std::filesystem::path(document).parent_path() / link;
            EXPECT_TRUE(exists(target)) << document << " links to " << link;
        }
    }
    EXPECT_GT(links, 10U);
}

TEST(Documents, show_every_picture_in_the_readme) {
    const Names shown = links_in(sources + "/README.md");
    for (const auto& entry : std::filesystem::directory_iterator(sources + "/docs/pictures")) {
        const std::string picture = entry.path().lexically_relative(sources);
        EXPECT_EQ(shown.count(picture), 1U) << picture;
    }
}

TEST(Documents, agree_on_the_version) {
    const std::string version = PROJECT_VERSION;
    EXPECT_NE(read_file(sources + "/CHANGELOG.md").find("\n## " + version + "\n"),
              std::string::npos);
    EXPECT_EQ(
        read_file(sources + "/packaging/debian/changelog").find("teluma-wizard (" + version + ") "),
        0U);
    EXPECT_NE(read_file(sources + "/wizard/terminal_session.cpp").find("(v" + version + ")"),
              std::string::npos);
}

// Folders and names of modules, in backquotes, which name a source or header without its ending;
// words after a name are arguments.
TEST(Documents, name_modules_that_there_are) {
    static const std::regex quoted(
        "`((?:wizard|ui|screens|apply|cmake|tests|tools|standin|sandbox|fuzz|docs)/[^` ]*)");
    size_t modules = 0;
    for (const std::string& document : every_document()) {
        for (const std::string& name : all_in(read_file(document), quoted)) {
            const std::string path = sources + "/" + name;
            ++modules;
            EXPECT_TRUE(exists(path) || exists(path + ".h")) << document << " names " << path;
        }
    }
    EXPECT_GT(modules, 30U);
}

}  // namespace
