// A command in a sandbox has the caller's terminal as if it had been started there directly.

#include <gtest/gtest.h>

#include <csignal>
#include <functional>

#include "tests/sandbox/sandbox.h"
#include "tests/support/terminal_program.h"

namespace {

ProgramSetup sandboxed(const std::string& script) {
    return {{sandbox_program, "sh", "-c", script}};
}

TEST(SandboxTerminal, is_the_controlling_terminal_and_the_command_in_its_foreground) {
    // A command in the background would be stopped by reading and by stty.
    TerminalProgram command(sandboxed(
        "echo ready >/dev/tty; stty -echo; read line; echo got $line; stty size </dev/tty"));
    command.waitForText("ready");
    command.type("something\r");
    EXPECT_EQ(command.waitExit(), exited(0));
    EXPECT_NE(command.printedAfterwards().find("got something\n24 80\n"), std::string::npos);
}

struct Event {
    std::string trapped;  // the shell's name of the signal; empty: the command does not answer it
    std::function<void(TerminalProgram&)> happens;
    int status;
};

void expect_answer(const Event& event) {
    SCOPED_TRACE(event.trapped + " " + std::to_string(event.status));
    TerminalProgram command(sandboxed(event.trapped.empty()
                                          ? "echo ready; exec sleep 1000"
                                          : "trap 'stty size; echo go on?; read line; exit " +
                                                std::to_string(event.status) + "' " +
                                                event.trapped + "; sleep 1000 & echo ready; wait"));
    command.waitForText("ready");
    event.happens(command);
    if (!event.trapped.empty()) {
        command.waitForText("go on?");
        EXPECT_EQ(command.image().shows("30 100"), event.trapped == "WINCH");
        command.type("yes\r");
    }
    EXPECT_EQ(command.waitExit(), exited(event.status));
}

TEST(SandboxTerminal, events_are_answered_by_the_command_in_its_own_time) {
    const auto press_ctrl_c = [](TerminalProgram& command) { command.press(Key::ctrl_c); };
    const auto hang_up = [](TerminalProgram& command) { command.signalForeground(SIGHUP); };
    expect_answer({"INT", press_ctrl_c, 3});
    expect_answer({"QUIT", [](TerminalProgram& command) { command.type("\x1c"); }, 4});
    expect_answer({"HUP", hang_up, 5});
    expect_answer({"WINCH", [](TerminalProgram& command) { command.resize(30, 100); }, 6});
    expect_answer({"", press_ctrl_c, 130});
    expect_answer({"", hang_up, 129});
}

TEST(SandboxTerminal, leaves_room_for_terminals_of_the_commands_own) {
    const CommandResult result = in_sandbox("script -qec 'tty && echo inner' /dev/null");
    EXPECT_EQ(result.status, exited(0)) << result.err;
    EXPECT_EQ(result.out, "/dev/pts/0\r\ninner\r\n");
}

}  // namespace
