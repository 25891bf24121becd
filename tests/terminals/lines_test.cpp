// Lines to the terminal: far away, slow, recorded, or through a multiplexer.

#include <gtest/gtest.h>

#include "tests/support/files.h"
#include "tests/support/golden.h"
#include "tests/support/screen_table.h"
#include "tests/support/terminal_program.h"

namespace {

ProgramSetup wizard_over_line(const char* milliseconds, const char* baud) {
    return {{SLOW_LINE_PROGRAM, milliseconds, baud, WIZARD_PROGRAM}};
}

std::string erased(size_t characters) { return std::string(characters, '\x7f'); }

// The answers of a whole run, every key from the first screen to the last.
std::string whole_run() {
    const std::string down = "\033OB";
    const std::string next = "\t\r";
    const std::string listener_next = "\t\t\r";
    return "Adm1n secret\tAdm1n secret\t\r" + erased(50) + "mail.example.com\t\tP0stmaster\t\r" +
           next + down + down + "\t" + erased(4) + "8080\t\r" + listener_next + next +
           listener_next + listener_next + listener_next + next + "\r";
}

// As over ssh to the other side of the world.
TEST(LineOf150MillisecondsEachWay, loses_no_key_of_a_run_that_is_typed_ahead) {
    TerminalProgram wizard(wizard_over_line("150", "0"));
    wizard.waitForText(title_of(Stop::password));
    wizard.type(whole_run());
    wizard.waitForText(" OK ");
    wizard.press(Key::enter);
    EXPECT_EQ(wizard.waitExit(), exited(0));
    const std::string summary = wizard.printedAfterwards();
    EXPECT_NE(summary.find("domain named 'mail.example.com' within"), std::string::npos) << summary;
    EXPECT_NE(summary.find("\thttp://192.168.7.2:8080"), std::string::npos) << summary;
}

TEST(LineOf150MillisecondsEachWay, draws_the_screen_for_the_size_that_the_terminal_got) {
    TerminalProgram wizard(wizard_over_line("150", "0"));
    wizard.waitForText(title_of(Stop::password));
    wizard.resize(20, 72);
    EXPECT_SCREEN(wizard, "../screens/golden/password_at_20x72");
}

TEST(SerialLineOf9600Baud, shows_screens_whole_and_loses_no_key) {
    TerminalProgram wizard(wizard_over_line("0", "9600"));
    EXPECT_SCREEN(wizard, "../screens/golden/password_on_password");
    wizard.type("secret\tsecret\t\r");
    EXPECT_SCREEN(wizard, "../screens/golden/domain_on_domain");
    wizard.type(erased(11) + "example.com\t\tsecret\t\r");
    EXPECT_SCREEN(wizard, "../screens/golden/aliases_on_list");
}

TEST(RecordedSession, looks_and_ends_as_one_that_is_not) {
    // Shells that stay beside the program would have an end of their own by Ctrl-C.
    TerminalProgram wizard(
        {{"script", "--quiet", "--return", "--command", "exec " WIZARD_PROGRAM, "log"}});
    EXPECT_SCREEN(wizard, "../screens/golden/password_on_password");
    wizard.press(Key::ctrl_c);
    EXPECT_EQ(wizard.waitExit(), exited(1));
    EXPECT_EQ(wizard.modes(), wizard.modesBefore());
    EXPECT_EQ(wizard.printedAfterwards(), "\nTELUMA Configuration Wizard Aborted!\n");
    EXPECT_NE(read_file("log").find(title_of(Stop::password)), std::string::npos);
}

class Multiplexer : public testing::Test {
  protected:
    Multiplexer() {
        write_file("tmux.conf",
                   "set -g status off\nset -g escape-time 0\n"
                   "set -g default-terminal tmux-256color\n");
    }

    // A tmux of this sandbox's own.
    static ProgramSetup tmux(std::vector<std::string> arguments) {
        ProgramSetup setup{{"tmux", "-f", "tmux.conf", "-L", "wizard"}};
        setup.arguments.insert(setup.arguments.end(), arguments.begin(), arguments.end());
        setup.environment = {{"TMUX_TMPDIR", "."}, {"TMUX", std::nullopt}};
        return setup;
    }
};

TEST_F(Multiplexer, shows_the_wizard_and_takes_its_keys_and_sizes) {
    TerminalProgram wizard(tmux({"new-session", WIZARD_PROGRAM}));
    EXPECT_SCREEN(wizard, "../screens/golden/password_on_password");
    wizard.type("secret\tsecret\t\r");
    wizard.waitForText(title_of(Stop::domain));
    wizard.resize(20, 72);
    EXPECT_SCREEN(wizard, "../screens/golden/domain_at_20x72");
    wizard.press(Key::ctrl_c);
    wizard.waitExit();
    EXPECT_EQ(wizard.modes(), wizard.modesBefore());
}

// A broken ssh connection costs nothing to somebody who was careful.
TEST_F(Multiplexer, keeps_the_wizard_when_the_terminal_is_gone) {
    {
        TerminalProgram lost(tmux({"new-session", WIZARD_PROGRAM}));
        lost.waitForText(title_of(Stop::password));
        lost.type("secret\tsecret\t\r");
        lost.waitForText(title_of(Stop::domain));
        lost.hangUp();
        lost.waitExit();
    }
    TerminalProgram wizard(tmux({"attach-session"}));
    EXPECT_SCREEN(wizard, "../screens/golden/domain_on_domain");
}

}  // namespace
