// How the sources hang together: the layers, what they remember, how long they are; and that the
// documents name what there is, the man page every message that the program can show.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/process.h"

namespace {

namespace fs = std::filesystem;

const fs::path sources = SOURCES;

// From the lowest to the highest: a file includes only what is in its own folder or a lower one.
const std::vector<std::string> layers = {"wizard/base", "wizard/system", "ui/terminal", "ui",
                                         "apply",       "screens",       "wizard"};

// The place of a path's folder among the layers; their number for any other folder.
size_t layer_of(const fs::path& path) {
    const auto layer = std::find(layers.begin(), layers.end(), path.parent_path());
    return static_cast<size_t>(layer - layers.begin());
}

// What the pattern's group 1 is each time that it is found in a text.
std::vector<std::string> all_in(const std::string& text, const std::regex& pattern) {
    std::vector<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at)
        found.push_back((*at)[1]);
    return found;
}

// The product's sources and headers, by their paths from the root.
std::vector<fs::path> product_files() {
    std::vector<fs::path> files;
    for (const char* folder : {"wizard", "ui", "screens", "apply"}) {
        for (const auto& entry : fs::recursive_directory_iterator(sources / folder)) {
            if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
                files.push_back(entry.path().lexically_relative(sources));
        }
    }
    EXPECT_GT(files.size(), 50U);
    return files;
}

TEST(Layers, include_only_what_is_lower) {
    static const std::regex include("#include \"([^\"]+)\"");
    for (const fs::path& file : product_files()) {
        EXPECT_LT(layer_of(file), layers.size()) << file << " is in no layer";
        for (const std::string& header : all_in(read_file(sources / file), include))
            EXPECT_LE(layer_of(header), layer_of(file)) << file << " includes " << header;
    }
}

TEST(Layers, are_shown_in_their_order) {
    static const std::regex row("\n[|] `([a-z/]+)/` [|]");
    EXPECT_EQ(all_in(read_file(sources / "docs/architecture.md"), row), layers);
}

// What some systems' headers bring along and others' do not is included where it is used.
TEST(Includes, name_what_only_some_systems_bring_along) {
    const std::pair<const char*, const char*> needed[] = {
        {"AF_INET", "#include <sys/socket.h>"},
        {"FD_ZERO", "#include <cstring>"},  // which calls memset() on SunOS
    };
    for (const auto& [used, header] : needed) {
        size_t uses = 0;
        for (const fs::path& file : product_files()) {
            const std::string text = read_file(sources / file);
            if (text.find(used) == std::string::npos) continue;
            ++uses;
            EXPECT_NE(text.find(header), std::string::npos) << file << " lacks " << header;
        }
        EXPECT_GT(uses, 0U) << used;
    }
}

constexpr size_t most_lines = 300;

TEST(Files, are_short) {
    for (const fs::path& file : product_files()) {
        const std::string text = read_file(sources / file);
        EXPECT_LE(std::count(text.begin(), text.end(), '\n'), most_lines) << file;
    }
}

constexpr size_t most_variables = 15;

// What the program remembers outside of its functions: a name, or a file and a name where only the
// file knows it. A line of nm's table: name, value, class, type, size, line, section.
std::set<std::string> variables_in(const std::string& library) {
    static const std::regex variable(
        "(.*[^ ]) *[|][^|]*[|] *([A-Za-z]) *[|][^|]*[|][^|]*[|][^|]*[|][.](bss|t?data).*");
    static const std::regex none(
        "guard variable.*|__odr_asan.*|.*DW[.]ref.*|.*[.]data[.]rel[.]ro.*");
    const CommandResult symbols = run_command({"nm", "-C", "-f", "sysv", library});
    EXPECT_EQ(symbols.status, exited(0)) << symbols.err;
    std::set<std::string> variables;
    std::string file;
    std::istringstream lines(symbols.out);
    for (std::string line; std::getline(lines, line);) {
        std::smatch parts;
        if (line.compare(0, 13, "Symbols from ") == 0)
            file = line.substr(13) + " ";
        else if (std::regex_match(line, parts, variable) && !std::regex_match(line, none))
            variables.insert((parts[2] == "b" || parts[2] == "d" ? file : "") + parts[1].str());
    }
    return variables;
}

TEST(World, is_small) {
    std::set<std::string> variables;
    for (const char* library : {LIBRARIES}) variables.merge(variables_in(library));
    EXPECT_GT(variables.size(), 5U);
    std::string all;
    for (const std::string& variable : variables) all += "\n" + variable;
    EXPECT_LE(variables.size(), most_variables) << all;
}

// The files and folders of the project that a document links to, from its own folder.
std::vector<std::string> links_in(const fs::path& document) {
    static const std::regex link(R"(\]\(([^):#]+)\))");
    return all_in(read_file(document), link);
}

std::vector<fs::path> documents() {
    std::vector<fs::path> found = {sources / "README.md", sources / "CONTRIBUTING.md"};
    for (const auto& entry : fs::directory_iterator(sources / "docs")) {
        if (entry.path().extension() == ".md") found.push_back(entry.path());
    }
    return found;
}

TEST(Documents, link_only_to_what_there_is) {
    size_t links = 0;
    for (const fs::path& document : documents()) {
        for (const std::string& link : links_in(document)) {
            ++links;
            EXPECT_TRUE(exists(document.parent_path() / link)) << document << " links to " << link;
        }
    }
    EXPECT_GT(links, 10U);
}

TEST(Documents, show_every_picture_in_the_readme) {
    const std::vector<std::string> shown = links_in(sources / "README.md");
    for (const auto& entry : fs::directory_iterator(sources / "docs/pictures")) {
        const std::string picture = entry.path().lexically_relative(sources);
        EXPECT_EQ(std::count(shown.begin(), shown.end(), picture), 1) << picture;
    }
}

TEST(Documents, agree_on_the_version) {
    const std::string version = PROJECT_VERSION;
    const std::pair<const char*, std::string> places[] = {
        {"CHANGELOG.md", "\n## " + version + "\n"},
        {"README.md", "/teluma-wizard_" + version + "_"},
        {"wizard/terminal_session.cpp", "(v" + version + ")"},
    };
    for (const auto& [file, text] : places)
        EXPECT_NE(read_file(sources / file).find(text), std::string::npos) << file;
}

// Folders and names of modules, in backquotes, which name a source or header without its ending;
// words after a name are arguments.
TEST(Documents, name_modules_that_there_are) {
    static const std::regex quoted(
        "`((?:wizard|ui|screens|apply|cmake|tests|tools|standin|sandbox|fuzz|docs)/[^` ]*)");
    size_t modules = 0;
    for (const fs::path& document : documents()) {
        for (const std::string& name : all_in(read_file(document), quoted)) {
            ++modules;
            EXPECT_TRUE(exists(sources / name) || exists(sources / (name + ".h")))
                << document << " names " << name;
        }
    }
    EXPECT_GT(modules, 30U);
}

// What the tables of promises are shown by: suites with their instances, and cases by how their
// names begin.
TEST(Documents, name_tests_that_there_are) {
    static const std::regex cell("\n[|] [^|]+ [|] (`[^|]+`) [|]");
    static const std::regex word("(\\w+)");
    std::string tests;
    for (const auto& entry : fs::recursive_directory_iterator(sources / "tests")) {
        if (entry.path().extension() == ".cpp") tests += read_file(entry.path());
    }
    const std::vector<std::string> cells = all_in(read_file(sources / "docs/reliability.md"), cell);
    EXPECT_GT(cells.size(), 50U);
    for (const std::string& names : cells) {
        for (const std::string& name : all_in(names, word)) {
            EXPECT_TRUE(tests.find("(" + name + ", ") != tests.npos ||
                        tests.find("{\"" + name) != tests.npos)
                << name;
        }
    }
}

// The texts in quotes of a source file, as they are shown; those that follow one another are one.
std::vector<std::string> texts_in(const fs::path& file) {
    static const std::regex between("\"\\s+\"");
    static const std::regex quoted(R"re("((?:[^"\\\n]|\\.)*)")re");
    std::vector<std::string> texts =
        all_in(std::regex_replace(read_file(file), between, ""), quoted);
    for (std::string& text : texts) {
        text = std::regex_replace(text, std::regex(R"(\\n)"), "");
        text = std::regex_replace(text, std::regex("%s"), "NAME");
    }
    return texts;
}

// A sentence that ends in an exclamation mark, or what goes to the system log. Titles are shorter.
bool is_message(const std::string& text) {
    const auto words = std::count(text.begin(), text.end(), ' ') + 1;
    return (words > 2 && text.back() == '!') || text.compare(0, 10, "Unable to ") == 0;
}

TEST(ManPage, tells_of_every_message_of_the_program) {
    // What the program says otherwise when it can not go on.
    std::vector<std::string> messages = {
        "You must install ncurses library",
        "Error opening terminal: ", "There is already an application that binds the ",
        "Selecting 127.0.0.1 will enable access to ", "TELUMA Configuration Wizard Aborted!"};
    for (const fs::path& file : product_files()) {
        for (const std::string& text : texts_in(sources / file)) {
            if (file.extension() == ".cpp" && is_message(text)) messages.push_back(text);
        }
    }
    EXPECT_GT(messages.size(), 25U);
    const std::string page = read_file(sources / "docs/teluma-wizard.8");
    for (const std::string& message : messages)
        EXPECT_NE(page.find(message), std::string::npos) << message;
}

}  // namespace
