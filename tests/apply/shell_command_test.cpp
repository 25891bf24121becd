#include "apply/shell_command.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "tests/support/files.h"
#include "wizard/system/resource_limits.h"
#include "wizard/system/signal_gate.h"

namespace {

int handled_signals = 0;

void count_signal(int /*number*/) { ++handled_signals; }

std::string every_printable_character() {
    std::string characters;
    for (char character = ' '; character <= '~'; ++character) characters += character;
    return characters;
}

class Shell : public testing::Test {
  protected:
    static int run(const std::string& command) { return run_server_command(command); }

    // The process group that a command is run in; /proc/PID/stat is described in proc(5).
    std::string groupOf(int (*runner)(const std::string&)) {
        runner("cut -d' ' -f5 /proc/$$/stat >" + directory / "group");
        return read_file(directory / "group");
    }

    // What the shell makes of a word.
    std::string said(const std::string& word) {
        run("printf %s " + word + " >" + directory / "said");
        return read_file(directory / "said");
    }

    TempDir directory;
};

TEST_F(Shell, runs_a_command_of_255_characters_and_none_that_is_longer) {
    const std::string command = "echo done >" + directory / "file" + "; exit 0";
    EXPECT_EQ(run(command + std::string(256 - command.size(), ' ')), -1);
    EXPECT_FALSE(exists(directory / "file"));
    EXPECT_EQ(run(command + std::string(255 - command.size(), ' ')), 0);
    EXPECT_EQ(read_file(directory / "file"), "done\n");
}

TEST_F(Shell, lets_signals_in_while_the_command_runs_and_tells_its_status) {
    hold_signal(SIGUSR1, count_signal);
    handled_signals = 0;
    const int status = run("kill -USR1 " + std::to_string(getpid()) + "; exit 3");
    EXPECT_EQ(handled_signals, 1);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 3);
}

TEST_F(Shell, a_command_has_the_signal_actions_that_the_program_was_started_with) {
    hold_signal(SIGUSR1, count_signal);
    std::signal(SIGPIPE, SIG_DFL);
    ignore_signal(SIGPIPE);
    EXPECT_EQ(WTERMSIG(run("kill -USR1 $$")), SIGUSR1);
    EXPECT_EQ(WTERMSIG(run("kill -PIPE $$")), SIGPIPE);
}

TEST_F(Shell, a_command_has_the_limits_that_the_program_was_started_with) {
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    change_limit(RLIMIT_NOFILE, before.rlim_cur - 1);
    run("ulimit -n >" + directory / "limit");
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(read_file(directory / "limit"), std::to_string(before.rlim_cur) + "\n");
}

TEST_F(Shell, a_command_that_changes_files_is_out_of_reach_of_the_interrupt_key) {
    EXPECT_EQ(groupOf(run_server_command), std::to_string(getpgrp()) + "\n");
    const auto runner = [](const std::string& command) { return run_file_command(command); };
    EXPECT_NE(groupOf(runner), std::to_string(getpgrp()) + "\n");
}

TEST_F(Shell, a_text_in_double_quotes_arrives_as_it_stands) {
    const std::string text = every_printable_character();
    EXPECT_EQ(said('"' + in_double_quotes(text.c_str()) + '"'), text);
}

TEST(InDoubleQuotes, only_what_the_shell_looks_at_gets_a_backslash) {
    EXPECT_EQ(in_double_quotes("plain 'text' !*?~#&;|<>(){}[]"), "plain 'text' !*?~#&;|<>(){}[]");
    EXPECT_EQ(in_double_quotes("\"$`\\"), "\\\"\\$\\`\\\\");
    EXPECT_EQ(in_double_quotes(""), "");
}

TEST_F(Shell, any_name_is_one_word) {
    const std::string text = every_printable_character();
    EXPECT_EQ(said(as_shell_word(text.c_str())), text);
    EXPECT_EQ(said(as_shell_word("$(echo no) 'yes'")), "$(echo no) 'yes'");
}

TEST(AsShellWord, is_quoted_only_where_that_is_needed_and_never_an_option) {
    EXPECT_EQ(as_shell_word("/var/opt/teluma/run/teluma.cfg"), "/var/opt/teluma/run/teluma.cfg");
    EXPECT_EQ(as_shell_word("-rf"), "./-rf");
    EXPECT_EQ(as_shell_word("-r f"), "'./-r f'");
    EXPECT_EQ(as_shell_word(""), "''");
}

}  // namespace
