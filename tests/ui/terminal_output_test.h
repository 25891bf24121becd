#pragma once

#include <curses.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <string>

#include "tests/support/descriptor.h"
#include "tests/support/emulator.h"
#include "tests/support/pty.h"
#include "ui/terminal/terminal_output.h"

/// A program on a terminal; each case is one by itself.
class TerminalOutputWithoutStore : public testing::Test {
  protected:
    TerminalOutputWithoutStore() {
        setenv("TERM", "xterm-256color", 1);
        for (const char* variable : {"LINES", "COLUMNS", "NCURSES_NO_UTF8_ACS"})
            unsetenv(variable);
        const Descriptor terminal = pty.openProgramSide();
        dup2(terminal.get(), STDIN_FILENO);
        dup2(terminal.get(), STDOUT_FILENO);
        inherited_before = inheritedDescriptors();
    }

    ~TerminalOutputWithoutStore() override {
        if (stdscr != nullptr && !isendwin())
            endwin();
        news();
        dup2(output_before.get(), STDOUT_FILENO);
        // A failure was told to the terminal.
        if (HasFailure())
            std::cout << all_bytes << std::flush;
    }

    /// What has reached the terminal since the last call.
    std::string news() {
        std::string bytes = pty.read();
        emulator.feed(bytes);
        all_bytes += bytes;
        return bytes;
    }

    /// How many descriptors a program would get that is started now.
    static int inheritedDescriptors() {
        int count = 0;
        for (int descriptor = 0; descriptor < 64; ++descriptor)
            count += fcntl(descriptor, F_GETFD) == 0 ? 1 : 0;
        return count;
    }

    static void open() {
        EXPECT_TRUE(open_terminal());
        cbreak();
        noecho();
    }

    static void limitResource(int resource, rlim_t most) {
        rlimit limit{};
        getrlimit(resource, &limit);
        limit.rlim_cur = most;
        setrlimit(resource, &limit);
    }

    void show() {
        wnoutrefresh(stdscr);
        show_frame();
    }

    void draw(int row, const std::string& text) { mvaddstr(row, 0, text.c_str()); }

    /// On a kind of terminal that has but one screen, so that no switch of screens tells of the
    /// attributes.
    void showBoldTextWithoutOtherScreen() {
        setenv("TERM", "vt220", 1);
        open();
        keep_output_back();
        attron(A_BOLD);
        draw(0, "bold");
        show();
    }

    /// What is written behind curses' back is not bold.
    void expectPlainText() {
        EXPECT_EQ(write(STDOUT_FILENO, "plain", 5), 5);
        news();
        const Position where = emulator.image().find("plain").value();
        EXPECT_FALSE(emulator.image().cell(where.row, where.col).bold);
    }

    /// What it takes to show a line, with UTF-8.
    std::string bytesOfLine() {
        std::setlocale(LC_CTYPE, "C.UTF-8");
        open();
        keep_output_back();
        show();
        news();
        mvhline(3, 0, ACS_HLINE, 70);
        show();
        return news();
    }

    std::string rowText(int row) {
        const std::string text = emulator.image().rowText(row);
        return text.substr(0, text.find_last_not_of(' ') + 1);
    }

    Descriptor output_before{dup(STDOUT_FILENO)};
    Pty pty{24, 80};
    TerminalModes modes_before = pty.modes();
    int inherited_before = 0;
    Emulator emulator{24, 80, "xterm-256color"};
    std::string all_bytes;
};

class TerminalOutput : public TerminalOutputWithoutStore {
  protected:
    TerminalOutput() { open(); }
};
