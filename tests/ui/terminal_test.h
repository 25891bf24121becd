#pragma once

#include <curses.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <initializer_list>
#include <iostream>
#include <string>

#include "tests/support/descriptor.h"
#include "tests/support/emulator.h"
#include "tests/support/pty.h"
#include "ui/terminal/terminal.h"
#include "ui/terminal/terminal_record.h"

/// The wizard's terminal, as standard input and output. What a test changes of the process is as it
/// was afterwards.
class TerminalTest : public testing::Test {
  protected:
    TerminalTest() {
        for (const char* variable : {"LINES", "COLUMNS", "NCURSES_NO_UTF8_ACS", "ESCDELAY"})
            unsetenv(variable);
        setenv("LC_ALL", "C.UTF-8", 1);
        for (int signal = 1; signal < 32; ++signal)
            sigaction(signal, nullptr, &actionsBefore[signal]);
        for (const int resource : {RLIMIT_FSIZE, RLIMIT_NOFILE})
            getrlimit(resource, &limitsBefore[resource]);
        const Descriptor terminal = pty.openProgramSide();
        dup2(terminal.get(), STDIN_FILENO);
        dup2(terminal.get(), STDOUT_FILENO);
    }

    ~TerminalTest() override {
        startOver();
        for (const int resource : {RLIMIT_FSIZE, RLIMIT_NOFILE})
            setrlimit(resource, &limitsBefore[resource]);
        for (int signal = 1; signal < 32; ++signal)
            sigaction(signal, &actionsBefore[signal], nullptr);
        std::setlocale(LC_CTYPE, "C");
        dup2(inputBefore.get(), STDIN_FILENO);
        dup2(outputBefore.get(), STDOUT_FILENO);
        // A failure was told to the terminal.
        if (HasFailure()) std::cout << allBytes << std::flush;
    }

    void open(const char* term = "xterm-256color") {
        setenv("TERM", term, 1);
        EXPECT_TRUE(open_terminal());
    }

    /// The same, and the first frame is no news any more.
    void openAndShow(const char* term = "xterm-256color") {
        open(term);
        show();
        news();
    }

    /// Has the wizard come to the terminal anew.
    void startOver() {
        if (stdscr != nullptr && !isendwin()) endwin();
        // Curses keeps the screens that are not current; freed, one would lose its panels.
        set_term(nullptr);
        wizard_terminal = {};
        news();
    }

    void limit(int resource, rlim_t most) {
        const rlimit limit{most, limitsBefore[resource].rlim_max};
        setrlimit(resource, &limit);
    }

    /// Enough for most frames, not for all: curses writes by itself.
    void keepFilesSmall() { limit(RLIMIT_FSIZE, 16 << 20); }

    /// What has reached the terminal since the last call.
    std::string news() {
        std::string bytes = pty.read();
        emulator.feed(bytes);
        allBytes += bytes;
        return bytes;
    }

    void draw(int row, const std::string& text) { mvaddstr(row, 0, text.c_str()); }

    void show() {
        wnoutrefresh(stdscr);
        show_frame();
    }

    std::string rowText(int row) {
        const std::string text = emulator.image().rowText(row);
        return text.substr(0, text.find_last_not_of(' ') + 1);
    }

    void resize(int rows, int cols) {
        pty.resize(rows, cols);
        emulator.resize(rows, cols);
        EXPECT_TRUE(renew_terminal());
    }

    Descriptor inputBefore{dup(STDIN_FILENO)};
    Descriptor outputBefore{dup(STDOUT_FILENO)};
    Pty pty{24, 80};
    TerminalModes modesBefore = pty.modes();
    Emulator emulator{24, 80, "xterm-256color"};

  private:
    struct sigaction actionsBefore[32] = {};
    rlimit limitsBefore[RLIM_NLIMITS] = {};
    std::string allBytes;
};
