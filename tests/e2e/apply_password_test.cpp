// Passwords reach the server as they were typed, by way of a shell or not.

#include <gtest/gtest.h>

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

}  // namespace
