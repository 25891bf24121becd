// Names of the filters script as a server may give them: each reaches the command that copies as
// that one name, or the step fails.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "apply/relay_filter.h"
#include "tests/apply/scripted_session.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "wizard/base/install_profile.h"

namespace {

struct ScriptName {
    const char* name;
    const char* given;  // by the server
    const char* file;   // that is meant by it
    bool written;
};

class RelayScriptName : public ScriptedSession, public testing::WithParamInterface<ScriptName> {
  protected:
    static constexpr const char* bystanders[] = {"a", "b", "victim"};

    // Answers of a server whose script has this name.
    void serveScript(const std::string& path) {
        answer(accepted + ("smtpFiltersFile = \"" + path + "\"\r\n") + accepted + accepted);
    }

    // The scripts stand beside the server's configuration.
    RelayScriptName() {
        std::snprintf(install_profiles[os_kind].config_file, sizeof(InstallProfile::config_file),
                      "./teluma.cfg");
        for (const char* bystander : bystanders)
            write_file(bystander, "precious");
    }

    static void expectBystandersUntouched() {
        for (const char* bystander : bystanders)
            EXPECT_EQ(read_file(bystander), "precious") << bystander;
        EXPECT_FALSE(exists("run"));
        EXPECT_FALSE(exists("temp.cfg"));
    }
};

TEST_P(RelayScriptName, is_one_name_or_the_step_fails) {
    const std::string file = GetParam().file;
    write_file(file, "script");
    serveScript(GetParam().given);
    const int first = 0;
    EXPECT_EQ(relay_write_filter(&first, 1), GetParam().written ? 0 : 1);
    EXPECT_EQ(read_file(file).compare(0, 12, "scriptmethod") == 0, GetParam().written);
    EXPECT_EQ(exists(file + ".beforewizard"), GetParam().written);
    expectBystandersUntouched();
}

const ScriptName script_names[] = {
    {"a_single_quote", "it's", "it's", true},
    {"single_quotes_around_a_command", "';touch${IFS}run;'", "';touch${IFS}run;'", true},
    {"a_double_quote_which_ends_it", "x\"y", "x\"y", false},
    {"blanks_which_are_left_out", " new  script ", "newscript", true},
    {"a_command_in_brackets", "$(touch${IFS}run)", "$(touch${IFS}run)", true},
    {"a_command_in_backticks", "`touch${IFS}run`", "`touch${IFS}run`", true},
    {"a_variable", "$HOME", "$HOME", true},
    {"a_second_command", "x;touch${IFS}run", "x;touch${IFS}run", true},
    {"a_second_command_by_and", "x&&touch${IFS}run", "x&&touch${IFS}run", true},
    {"a_pipe_into_a_command", "x|tee${IFS}run", "x|tee${IFS}run", true},
    {"a_command_on_a_second_line", "x\ntouch${IFS}run", "x\ntouch${IFS}run", true},
    {"a_line_feed_at_its_end", "x\n", "x\n", true},
    {"a_tab", "a\tb", "a\tb", true},
    {"a_star", "*", "*", true},
    {"a_question_mark", "?", "?", true},
    {"braces", "{a,b}", "{a,b}", true},
    {"a_tilde", "~", "~", true},
    {"a_number_sign", "#x", "#x", true},
    {"a_backslash", "\\x\\", "\\x\\", true},
    {"a_format", "%s%n%d", "%s%n%d", true},
    {"letters_beyond_ascii", "\xc3\xa9\xff", "\xc3\xa9\xff", true},
    {"control_characters", "\x1b[2J\x07", "\x1b[2J\x07", true},
    {"an_option", "-rf", "-rf", true},
    {"a_long_option", "--help", "--help", true},
    {"an_option_that_names_a_target", "-ta", "-ta", true},
    {"two_dashes", "--", "--", true},
    {"the_name_of_the_working_copy_itself", "./x/../temp.cfg", "x", false},
    {"a_directory", ".", "x", false},
    {"nothing", "", "x", false},
};

INSTANTIATE_TEST_SUITE_P(With, RelayScriptName, testing::ValuesIn(script_names), CaseName());

}  // namespace
