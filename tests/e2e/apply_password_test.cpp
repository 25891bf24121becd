// Passwords reach the server as they were typed, by way of a shell or not.

#include <gtest/gtest.h>

#include "tests/e2e/apply_test.h"
#include "tests/e2e/apply_wire.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"

namespace {

struct PasswordCase {
    const char* name;
    const char* text;
};

class ApplyPassword : public ApplyTest, public testing::WithParamInterface<PasswordCase> {
  protected:
    ApplyPassword() { askForLittle(); }
};

TEST_P(ApplyPassword, of_the_administrator_is_set_and_logged_in_with_as_typed) {
    answers.password = GetParam().text;
    runThrough();
    EXPECT_EQ(server.commands(), run_commands(answers));
    EXPECT_EQ(read_file("/var/opt/teluma/run/teluma.password"), GetParam().text);
    EXPECT_FALSE(exists("/run/scratch/run"));
}

TEST_P(ApplyPassword, of_the_postmaster_is_sent_as_typed) {
    answers.postmaster_password = GetParam().text;
    runThrough();
    EXPECT_EQ(server.commands(), run_commands(answers));
    EXPECT_EQ(records(server.stateAfterRestart(answers.password), "domain localdomain"),
              std::vector<std::string>{"/var/opt/teluma/domains/localdomain/ " +
                                       std::string(GetParam().text)});
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
    {"blanks", "a  b   c"},
    {"shell_operators", ";touch run;&&|| >run <run #!*?[a]{b,c}~"},
    {"percent_signs", "%s%d%n%%"},
    {"a_quoted_form_of_twice_the_length",
     "\\\"$`\\\"$`\\\"$`\\\"$`\\\"$`\\\"$`\\\"$`\\\"$`\\\"$`\\\"$`\\\"$`\\\"$`x"},
};

INSTANTIATE_TEST_SUITE_P(With, ApplyPassword, testing::ValuesIn(password_cases), CaseName());

class ApplyPasswordLength : public ApplyTest {
  protected:
    ApplyPasswordLength() { askForLittle(); }

    const std::string fifty = "12345678901234567890123456789012345678901234567890";
};

TEST_F(ApplyPasswordLength, of_the_administrator_is_at_most_50) {
    answers.password = fifty + "x";
    runThrough();
    answers.password = fifty;
    EXPECT_EQ(server.commands(), run_commands(answers));
}

TEST_F(ApplyPasswordLength, of_the_administrator_fits_the_command_with_fifty_characters_to_quote) {
    answers.password = std::string(50, '"');
    runThrough();
    EXPECT_EQ(server.commands(), run_commands(answers));
}

TEST_F(ApplyPasswordLength, of_the_postmaster_is_at_most_49) {
    answers.postmaster_password = fifty;
    runThrough();
    answers.postmaster_password.pop_back();
    EXPECT_EQ(server.commands(), run_commands(answers));
}

}  // namespace
