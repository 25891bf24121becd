#include "tests/support/terminal_program.h"

#include <poll.h>

#include <csignal>
#include <sstream>
#include <stdexcept>

#include "tests/support/escape_sequences.h"
#include "tests/support/screen_text.h"

namespace {

SessionCommand session_command(const ProgramSetup& setup) {
    EnvironmentChanges changes = setup.environment;
    // These have the last word only where the test has not.
    changes.insert({{"TERM", setup.term},
                    {"LC_ALL", setup.locale},
                    {"LINES", std::nullopt},
                    {"COLUMNS", std::nullopt}});
    return {setup.arguments, changed_environment(changes), setup.directory};
}

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace

TerminalProgram::TerminalProgram(const ProgramSetup& setup)
    : pty(setup.rows, setup.cols),
      modesAtStart(pty.modes()),
      emulator(setup.rows, setup.cols, setup.term),
      session(pty.openProgramSide(), session_command(setup)) {}

TerminalProgram::~TerminalProgram() {
    if (connected && !session.ended()) signalForeground(SIGKILL);
}

void TerminalProgram::absorb() {
    const std::string output = pty.read();
    allOutput += output;
    emulator.feed(output);
    if (connected) pty.write(emulator.takeReplies());
}

bool TerminalProgram::waitForNews(int milliseconds) {
    pollfd waited[] = {{pty.descriptor(), POLLIN, 0}, {session.descriptor(), POLLIN, 0}};
    const bool news = poll(waited, 2, milliseconds) > 0;
    // Asked before the output is read, so that it cannot end in between and leave some unread.
    complete = session.ended().has_value();
    absorb();
    return news;
}

bool TerminalProgram::comesTo(const Condition& condition) {
    const Deadline deadline;
    waitForNews(0);
    while (!condition(emulator.image())) {
        if (complete || deadline.passed()) return false;
        // Some conditions look at more than the screen, so they are asked again without news.
        waitForNews(deadline.millisecondsLeft(50));
    }
    return true;
}

void TerminalProgram::waitUntil(const Condition& condition, const std::string& description,
                                const Caller& caller) {
    if (!comesTo(condition)) giveUp(description, caller);
}

Position TerminalProgram::waitForText(const std::string& text, const Caller& caller) {
    waitUntil([&](const ScreenImage& screen) { return screen.shows(text); },
              quoted(text) + " was on the screen", caller);
    return *emulator.image().find(text);
}

void TerminalProgram::waitGone(const std::string& text, const Caller& caller) {
    waitUntil([&](const ScreenImage& screen) { return !screen.shows(text); },
              quoted(text) + " was gone from the screen", caller);
}

ExitStatus TerminalProgram::waitExit(const Caller& caller) {
    const Deadline deadline;
    while (!complete) {
        if (deadline.passed()) giveUp("the program had ended", caller);
        waitForNews(deadline.millisecondsLeft(1000));
    }
    return *session.ended();
}

void TerminalProgram::waitQuiet() {
    while (!complete && waitForNews(200)) continue;
}

void TerminalProgram::type(const std::string& bytes) {
    const Deadline deadline;
    for (size_t typed = pty.write(bytes); typed < bytes.size();) {
        if (deadline.passed()) throw std::runtime_error("the program did not read what was typed");
        waitForNews(10);
        typed += pty.write(bytes.substr(typed));
    }
}

void TerminalProgram::press(Key key) {
    absorb();
    type(emulator.keyBytes(key));
}

void TerminalProgram::resize(int rows, int cols) {
    absorb();
    emulator.resize(rows, cols);
    pty.resize(rows, cols);
}

void TerminalProgram::hangUp() {
    absorb();
    connected = false;
    pty.hangUp();
}

void TerminalProgram::signal(int number) { checked(kill(session.program(), number), "kill"); }

void TerminalProgram::signalForeground(int number) {
    const int group = pty.foregroundGroup();
    if (group > 1) kill(-group, number);
}

ScreenImage TerminalProgram::image() {
    waitForNews(0);
    return emulator.image();
}

bool TerminalProgram::alternateScreen() {
    waitForNews(0);
    return emulator.alternateScreen();
}

std::string TerminalProgram::output() {
    waitForNews(0);
    return allOutput;
}

std::string TerminalProgram::printedAfterwards() {
    const std::string printed = output();
    const std::string leave = "\x1b[?1049l";
    const size_t at = printed.rfind(leave);
    return plain_text(at == std::string::npos ? printed : printed.substr(at + leave.size()));
}

void TerminalProgram::giveUp(const std::string& description, const Caller& caller) {
    std::ostringstream message;
    if (complete)
        message << "the program ended (" << *session.ended() << ") before " << description;
    else
        message << "waited in vain until " << description;
    message << "; the screen:\n" << to_text(emulator.image());
    stop_test(caller, message.str());
}
