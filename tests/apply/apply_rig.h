#pragma once

#include <gtest/gtest.h>

#include "tests/support/curses_terminal.h"
#include "tests/support/installed_server.h"
#include "tests/support/screen_image.h"
#include "tests/support/waits.h"

/// Curses on a terminal of its own with the wizard's background and root frame, for code that shows
/// boxes.
class CursesScreen {
  public:
    CursesScreen();
    ~CursesScreen();

    CursesTerminal terminal{24, 80};
};

/// The profile of this system is selected, whose paths are those of the server in the sandbox. The
/// host's networks are known: the interfaces are "all", lo, eth0 (192.168.7.2) and eth1
/// (10.20.0.5). No sleep takes its time.
class InstalledServerCase : public testing::Test {
  protected:
    static constexpr const char* password = "Adm1n secret";

    InstalledServerCase();
    ~InstalledServerCase() override;

    /// Restarts the server with the password and logs in; a failure fails the test.
    void logIn();

    InstalledServer server;
    Waits waits;
};

/// The lines inside the box on a screen without the spaces around them; empty ones are left out.
Lines boxed_lines(const ScreenImage& image);
