// Passwords reach the server as they were typed, by way of a shell or not; and what is left of them
// in the wizard's memory.

#include <gtest/gtest.h>

#include <fstream>

#include "tests/e2e/apply_test.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"

namespace {

struct PasswordCase {
    const char* name;
    std::string text;
    size_t administrator = std::string::npos;  // how much of it is taken
    size_t postmaster = std::string::npos;
};

class ApplyPassword : public ApplyTest, public testing::WithParamInterface<PasswordCase> {};

TEST_P(ApplyPassword, of_the_administrator_and_the_postmaster_are_set_as_typed) {
    const PasswordCase& typed = GetParam();
    askForLittle();
    answers.password = answers.postmaster_password = typed.text;
    runThrough();
    answers.password = typed.text.substr(0, typed.administrator);
    answers.postmaster_password = typed.text.substr(0, typed.postmaster);
    EXPECT_EQ(server.commands(), wire());
    EXPECT_EQ(server.password(), answers.password);
    EXPECT_EQ(records(server.stateAfterRestart(answers.password), "domain localdomain"),
              Lines{"/var/opt/teluma/domains/localdomain/ " + answers.postmaster_password});
    EXPECT_FALSE(exists("/run/scratch/run"));
}

const PasswordCase password_cases[] = {
    {"the_first_half_of_the_printable_characters",
     "! \"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNO"},
    {"the_second_half_of_the_printable_characters",
     "PQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~"},
    {"a_leading_dash", "-A -f"},
    {"quotes", "\"dou\"\"ble\" 'sin'gle'"},
    {"dollars", "$HOME $$ ${PATH} $1$"},
    {"backticks", "`touch run` ``"},
    {"command_substitution", "$(touch run)"},
    {"backslashes", "\\a\\\\b\\\"\\$\\`\\n\\"},
    {"spaces", "a  b   c"},
    {"shell_operators", ";touch run;&&|| >run <run #!*?[a]{b,c}~"},
    {"percent_signs", "%s%d%n%%"},
    {"a_quoted_form_of_twice_the_length", std::string(49, '"')},
    {"more_characters_than_fit", "12345678901234567890123456789012345678901234567890x", 50, 49},
};

INSTANTIATE_TEST_SUITE_P(With, ApplyPassword, testing::ValuesIn(password_cases), CaseName());

int occurrences(const std::string& text, const std::string& bytes) {
    int count = 0;
    for (size_t at = bytes.find(text); at != std::string::npos; at = bytes.find(text, at + 1))
        ++count;
    return count;
}

/// How often each of the texts is in the memory that a process may write to. That goes area by
/// area: a line of their table is "FROM-TO rw...". Areas that are too large to be anything but
/// reserved by the sanitizers are left out.
std::vector<int> copies_of(const std::vector<std::string>& texts, pid_t pid) {
    constexpr unsigned long most = 1UL << 28;
    const std::string process = "/proc/" + std::to_string(pid);
    std::ifstream areas(process + "/maps");
    std::ifstream memory(process + "/mem", std::ios::binary);
    std::vector<int> counts(texts.size());
    for (std::string line; std::getline(areas, line);) {
        size_t dash = 0;
        const unsigned long from = std::stoul(line, &dash, 16);
        const unsigned long to = std::stoul(line.substr(dash + 1), nullptr, 16);
        if (line.find(" rw") == std::string::npos || to - from > most) continue;
        std::string bytes(to - from, '\0');
        memory.clear();
        memory.seekg(static_cast<std::streamoff>(from));
        memory.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        bytes.resize(static_cast<size_t>(memory.gcount()));
        for (size_t i = 0; i < texts.size(); ++i) counts[i] += occurrences(texts[i], bytes);
    }
    return counts;
}

using ApplySecrets = ApplyTest;

TEST_F(ApplySecrets, are_in_the_fields_of_their_screens_alone_when_they_have_been_applied) {
    answers.password = "Adm1n secret that \"stands\" alone";
    answers.postmaster_password = "P0stmaster's, which does too";
    wizard.walkToTheEnd(answers);
    wizard.waitForText(" OK ");
    wizard.waitForKey();
    EXPECT_EQ(
        copies_of({answers.password, answers.postmaster_password, "that \\\"stands"}, wizard.pid()),
        (std::vector<int>{2, 1, 0}));
    EXPECT_EQ(wizard.finish(), exited(0));
}

}  // namespace
