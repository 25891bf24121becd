#include "tests/apply/apply_rig.h"

#include <curses.h>

#include <csignal>

#include "apply/cli_session.h"
#include "apply/server_process.h"
#include "apply/server_session.h"
#include "tests/support/screen_text.h"
#include "ui/main_window.h"
#include "ui/window.h"
#include "wizard/base/host_facts.h"
#include "wizard/ending.h"
#include "wizard/terminal_session.h"

CursesScreen::CursesScreen() {
    check_terminal_size();
    draw_background();
    main_window = new Window(stdscr, nullptr);
}

CursesScreen::~CursesScreen() {
    release_screens();
    screen_state = state_password;
}

InstalledServerCase::InstalledServerCase() {
    std::signal(SIGPIPE, SIG_IGN);
    discover_host();
}

InstalledServerCase::~InstalledServerCase() {
    release_networks();
    server_session = {};
}

void InstalledServerCase::logIn() {
    ASSERT_EQ(server_restart_with_password(password), 0);
    ASSERT_EQ(cli_login(), 0);
}

Lines boxed_lines(const ScreenImage& image) {
    const std::string side = "│";
    Lines lines;
    for (const std::string& text : split_lines(image.text())) {
        const size_t left = text.find(side);
        if (left == std::string::npos) continue;
        // A line of progress may be so long that it hides the right side.
        const size_t right = text.rfind(side);
        const size_t from = left + side.size();
        std::string line = text.substr(from, right > left ? right - from : std::string::npos);
        line.erase(line.find_last_not_of(' ') + 1);
        if (!line.empty()) lines.push_back(line.substr(line.find_first_not_of(' ')));
    }
    return lines;
}
