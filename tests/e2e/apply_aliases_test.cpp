// What the server is told for each combination of aliases, and what it makes of that.

#include <gtest/gtest.h>

#include "tests/e2e/apply_screen.h"
#include "tests/e2e/apply_test.h"
#include "tests/e2e/apply_wire.h"
#include "tests/support/case_name.h"

namespace {

struct AliasCase {
    const char* name;
    std::vector<bool> ticks;  // root, localhost, localhost.localdomain
    std::vector<std::string> domain_aliases;
    std::vector<std::string> postmaster_aliases;
};

class ApplyAliases : public ApplyTest, public testing::WithParamInterface<AliasCase> {};

TEST_P(ApplyAliases, are_added_by_these_commands_and_are_there_after_a_restart) {
    answers.aliases = GetParam().ticks;
    runThrough();
    EXPECT_EQ(server.commands(), run_commands(answers));
    const std::string state = server.stateAfterRestart(answers.password);
    EXPECT_EQ(records(state, "domainalias localdomain"), GetParam().domain_aliases);
    EXPECT_EQ(records(state, "accountalias localdomain postmaster"), GetParam().postmaster_aliases);
}

const AliasCase alias_cases[] = {
    {"none", {false, false, false}, {}, {}},
    {"root", {true, false, false}, {}, {"root"}},
    {"localhost", {false, true, false}, {"localhost"}, {}},
    {"root_and_localhost", {true, true, false}, {"localhost"}, {"root"}},
    {"localdomain", {false, false, true}, {"localhost.localdomain"}, {}},
    {"root_and_localdomain", {true, false, true}, {"localhost.localdomain"}, {"root"}},
    {"localhost_and_localdomain", {false, true, true}, {"localhost.localdomain", "localhost"}, {}},
    {"all", {true, true, true}, {"localhost.localdomain", "localhost"}, {"root"}},
};

INSTANTIATE_TEST_SUITE_P(EveryCombination, ApplyAliases, testing::ValuesIn(alias_cases),
                         CaseName());

class ApplyNoAlias : public ApplyTest {};

TEST_F(ApplyNoAlias, has_no_line_on_the_screen) {
    askForLittle();
    wizard.walkToTheEnd(answers);
    wait_for_progress(wizard, {done("setting admin password"), done("connecting to CLI"),
                               done("creating domain localdomain"), done("configuring WebAdmin"),
                               done("configuring SMTP")});
}

}  // namespace
