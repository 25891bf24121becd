#pragma once

#include <string>
#include <vector>

#include "tests/apply/curses_screen.h"
#include "tests/apply/installed_server_case.h"
#include "tests/support/screen_image.h"
#include "wizard/base/wizard_settings.h"

/// The apply sequence with a real screen and a real server: the last screen has just been left with
/// the answers of a user who keeps every default, except that no network may relay and sendmail
/// stays as it is. The interfaces are "all", lo, eth0 (192.168.7.2) and eth1 (10.20.0.5).
class ApplyCase : public InstalledServerCase {
  protected:
    ApplyCase();
    ~ApplyCase() override;

    /// Chooses everything that the answers above leave out.
    static void chooseAll();

    /// Runs the sequence with Enter pressed whenever it waits for a key. Returns what the terminal
    /// showed at these moments.
    std::vector<ScreenImage> apply();

    /// Enables exactly these of the optional services.
    static void enable(bool pop3, bool imap, bool webmail);

    CursesScreen screen;
};

/// The lines inside the box on a screen, those that are not empty, without the blanks around them.
std::vector<std::string> boxed_lines(const ScreenImage& image);

/// The words inside the box, with a blank between them.
std::string boxed_text(const ScreenImage& image);
