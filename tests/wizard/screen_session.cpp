#include "tests/wizard/screen_session.h"

#include <unistd.h>

#include <csignal>

#include "screens/screen_table.h"
#include "tests/support/wait_until.h"
#include "tests/wizard/fake_interfaces.h"
#include "tests/wizard/replaced_calls.h"
#include "ui/main_window.h"
#include "ui/window.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/install_profile.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/ending.h"
#include "wizard/terminal_session.h"

ScreenSession::ScreenSession(Size size) : terminal(size.rows, size.cols) {
    alarm(static_cast<unsigned>(patience().count() / 1000));
    fake_interfaces({{"lo", "127.0.0.1", "255.0.0.0"},
                     {"eth0", "192.168.7.2", "255.255.255.0"},
                     {"eth1", "10.20.0.5", "255.0.0.0"},
                     {"wan", "172.16.0.1", "255.255.0.0"}});
    discover_networks();
    select_install_profile();
    form_document_paths();
    check_terminal_size();
    draw_background();
    main_window = new Window(stdscr, nullptr);
    create_screens();
}

ScreenSession::~ScreenSession() {
    alarm(0);
    release_screens();
    replaced_calls.interface_ioctl = nullptr;
    wizard_settings = WizardSettings{};
    screen_state = state_password;
    for (int state = 0; state < screen_count; ++state)
        screen_focus(state) = 0;
    screen_rows = -1;
    screen_cols = -1;
}

void ScreenSession::resize(Size size) {
    terminal.resize(size.rows, size.cols);
    on_resize(SIGWINCH);
}

std::vector<int> ScreenSession::takeUnreadKeys() {
    // Curses shows what has changed in a window when it reads from it, but never a pad.
    WINDOW* pad = newpad(1, 1);
    keypad(pad, TRUE);
    nodelay(pad, TRUE);
    std::vector<int> keys;
    for (int key = wgetch(pad); key != ERR; key = wgetch(pad))
        keys.push_back(key);
    delwin(pad);
    return keys;
}
