// The man page tells of every message that the program can show.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <vector>

#include "tests/support/files.h"

namespace {

using Texts = std::vector<std::string>;

// The texts in quotes of a source file; those that follow one another are one.
Texts texts_in(const std::string& source) {
    static const std::regex between("\"\\s+\"");
    static const std::regex quoted(R"re("((?:[^"\\\n]|\\.)*)")re");
    const std::string joined = std::regex_replace(source, between, "");
    Texts texts;
    for (std::sregex_iterator found(joined.begin(), joined.end(), quoted), end; found != end;
         ++found)
        texts.push_back((*found)[1]);
    return texts;
}

// A sentence that ends in an exclamation mark, or what goes to the system log. Titles are shorter.
bool is_message(const std::string& text) {
    const auto words = std::count(text.begin(), text.end(), ' ') + 1;
    return (words > 2 && text.back() == '!') || text.compare(0, 10, "Unable to ") == 0;
}

Texts messages_below(const std::string& directory) {
    Texts messages;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
        if (entry.path().extension() != ".cpp") continue;
        for (std::string text : texts_in(read_file(entry.path()))) {
            text = std::regex_replace(text, std::regex(R"(\\n)"), "");
            text = std::regex_replace(text, std::regex("%s"), "NAME");
            if (is_message(text)) messages.push_back(text);
        }
    }
    return messages;
}

TEST(ManPage, tells_of_every_message_of_the_program) {
    // What the program says otherwise when it can not go on.
    Texts messages = {"You must install ncurses library",
                      "Error opening terminal: ", "There is already an application that binds the ",
                      "Selecting 127.0.0.1 will enable access to ",
                      "TELUMA Configuration Wizard Aborted!"};
    for (const char* folder : {"/wizard", "/ui", "/screens", "/apply"}) {
        const Texts below = messages_below(std::string(SOURCES) + folder);
        messages.insert(messages.end(), below.begin(), below.end());
    }
    EXPECT_GT(messages.size(), 25U);
    const std::string page = read_file(SOURCES "/docs/teluma-wizard.8");
    for (const std::string& message : messages)
        EXPECT_NE(page.find(message), std::string::npos) << message;
}

}  // namespace
