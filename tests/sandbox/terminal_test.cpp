// A command in a sandbox has the caller's terminal as if it had been started there directly.

#include <gtest/gtest.h>

#include <csignal>

#include "tests/sandbox/sandbox.h"
#include "tests/support/terminal_program.h"

namespace {

ProgramSetup sandboxed(const std::string& script) {
    return {{sandbox_program(), "sh", "-c", script}};
}

TEST(SandboxTerminal, is_the_commands_controlling_terminal) {
    TerminalProgram command(
        sandboxed("echo written to the terminal >/dev/tty; stty size </dev/tty"));
    EXPECT_EQ(command.waitExit(), exited(0));
    EXPECT_EQ(command.printedAfterwards(), "written to the terminal\n24 80\n");
}

TEST(SandboxTerminal, can_be_read_and_set_because_the_command_is_in_the_foreground) {
    // A command in the background would be stopped by reading and by stty.
    TerminalProgram command(sandboxed("stty -echo && echo ready && read line && echo got $line"));
    command.waitForText("ready");
    command.type("something\r");
    EXPECT_EQ(command.waitExit(), exited(0));
    EXPECT_TRUE(command.image().shows("got something"));
}

// A command that says "ready", waits, and answers a signal with a shell command.
ProgramSetup answering(const std::string& signal, const std::string& answer) {
    return sandboxed("trap '" + answer + "' " + signal + "; sleep 1000 & echo ready; wait");
}

TEST(SandboxTerminal, sends_ctrl_c_to_the_command_which_may_answer_it) {
    TerminalProgram command(answering("INT", "exit 3"));
    command.waitForText("ready");
    command.press(Key::ctrl_c);
    EXPECT_EQ(command.waitExit(), exited(3));
}

TEST(SandboxTerminal, ends_a_command_with_ctrl_c_when_it_does_not_answer_it) {
    TerminalProgram command(sandboxed("echo ready; exec sleep 1000"));
    command.waitForText("ready");
    command.press(Key::ctrl_c);
    EXPECT_EQ(command.waitExit(), exited(130));
}

TEST(SandboxTerminal, lets_the_command_take_its_time_to_answer_a_quit) {
    TerminalProgram command(answering("QUIT", "echo go on?; read line; exit 4"));
    command.waitForText("ready");
    command.type("\x1c");
    command.waitForText("go on?");
    command.type("yes\r");
    EXPECT_EQ(command.waitExit(), exited(4));
}

TEST(SandboxTerminal, lets_the_command_take_its_time_to_answer_a_hang_up) {
    TerminalProgram command(answering("HUP", "echo go on?; read line; exit 5"));
    command.waitForText("ready");
    command.signalForeground(SIGHUP);
    command.waitForText("go on?");
    command.type("yes\r");
    EXPECT_EQ(command.waitExit(), exited(5));
}

TEST(SandboxTerminal, ends_a_command_with_a_hang_up_when_it_does_not_answer_it) {
    TerminalProgram command(sandboxed("echo ready; exec sleep 1000"));
    command.waitForText("ready");
    command.signalForeground(SIGHUP);
    EXPECT_EQ(command.waitExit(), exited(129));
}

TEST(SandboxTerminal, tells_the_command_of_a_new_size) {
    TerminalProgram command(answering("WINCH", "stty size; exit 6"));
    command.waitForText("ready");
    command.resize(30, 100);
    EXPECT_EQ(command.waitExit(), exited(6));
    EXPECT_TRUE(command.image().shows("30 100"));
}

TEST(SandboxTerminal, has_room_for_terminals_of_the_commands_own) {
    const CommandResult result = in_sandbox("script -qec 'tty && echo inner' /dev/null");
    EXPECT_EQ(result.status, exited(0)) << result.err;
    EXPECT_EQ(result.out, "/dev/pts/0\r\ninner\r\n");
}

}  // namespace
