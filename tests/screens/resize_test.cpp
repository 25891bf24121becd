// What the handler of a resize does: with dialogs and pending boxes, with the keys that it swallows
// and the modes that it leaves windows in.

#include <gtest/gtest.h>
#include <panel.h>

#include <cerrno>
#include <csignal>

#include "apply/progress_list.h"
#include "screens/screen.h"
#include "screens/screen_table.h"
#include "tests/screens/moved_picture.h"
#include "tests/support/case_name.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "ui/keys.h"
#include "ui/main_window.h"
#include "ui/message_dialogs.h"
#include "wizard/terminal_session.h"

namespace {

/// Something that can stand on the screen.
struct Scene {
    std::string name;
    int state;  // the value of `screen_state` while it is there
    std::function<void()> show;
    std::string keys = {};  // lead to it

    bool isScreen() const { return state < screen_count; }
    bool isQuestionOrMessage() const { return state == state_message || state == state_yes_no; }
    bool isPlacedAlways() const {
        return state == state_services || state == state_relay || state == state_sendmail;
    }
};

void PrintTo(const Scene& scene, std::ostream* out) { *out << scene.name; }

// A pending box takes no keys; something else goes on while it stands. Here that is a wait for one.
void show_pending(const std::string& message) {
    showPending(message.c_str(), "Operation pending!");
    read_key(*main_window);
}

void show_progress() {
    showApplyPending("Please wait until the changes are applied!", "Operations pending");
    progress_show_all();
    progress_add("pass", "--> setting admin password");
    progress_done("pass");
    progress_add("login", "--> connecting to CLI");
}

std::vector<Scene> dialogs() {
    const auto question = [] {
        askYesNo(
            "Selecting 127.0.0.1 will enable access to SMTP service \tonly from this machine and "
            "not remotely from other machines. Are you sure?",
            "WARNING!");
    };
    const auto warning = [] {
        askRetryOrBack(
            "There is already an application that binds the 25 port on the selected "
            "interface 0.0.0.0. Please stop that application.",
            "Warning!", "127.0.0.1", 0);
    };
    return {
        {"message", state_message, [] { showMessage("Passwords do not match!", "Error!"); }},
        {"no", state_yes_no, question},
        {"yes", state_yes_no, question, "\t"},
        {"retry", state_retry_back, warning},
        {"back", state_retry_back, warning, "\t"},
        {"pending", state_pending, [] { show_pending("Please wait!"); }},
        {"long_pending", state_pending, [] { show_pending(std::string(250, 'm')); }},
        {"progress", state_pending,
         [] {
             show_progress();
             read_key(*main_window);
         }},
        {"progress_ok", state_pending,
         [] {
             show_progress();
             progress_wait_for_ok();
         }},
    };
}

std::vector<Scene> screens_and_dialogs() {
    std::vector<Scene> scenes = dialogs();
    for (const ScreenFacts& screen : all_screens())
        scenes.push_back({screen.name, screen.state, [] { run_screens(); }});
    return scenes;
}

ScreenImage resized(const Scene& scene, const Size& first, const std::vector<Size>& sizes) {
    WizardRig wizard(state_password, first);
    wizard.playWith(scene.show, {scene.keys, [&] {
                                     for (const Size& size : sizes) wizard.resize(size);
                                 }});
    return wizard.image();
}

class Dialog : public testing::TestWithParam<Scene> {};

TEST_P(Dialog, looks_fresh_after_resizes) {
    const std::vector<std::vector<Size>> changes = {
        {usual, large},    {usual, smallest},        {large, smallest},
        {smallest, large}, {usual, smallest, large}, {usual, {20, 72}, {60, 72}, {60, 81}}};
    for (const std::vector<Size>& sizes : changes)
        EXPECT_SAME_LOOK(resized(GetParam(), sizes.back(), {}),
                         resized(GetParam(), sizes.front(), {sizes.begin() + 1, sizes.end()}));
}

INSTANTIATE_TEST_SUITE_P(Dialogs, Dialog, testing::ValuesIn(dialogs()), CaseName());

TEST(ResizedPicture, the_question_stays_on_top_in_the_middle_with_the_cursor_hidden) {
    EXPECT_SCREEN(resized(dialogs()[1], large, {smallest}), "golden/question_resized");
}

// The keys that curses or the terminal still holds, read without showing anything: curses shows
// what has changed in a window when it reads from it, but never a pad.
std::string unread_keys() {
    WINDOW* pad = newpad(1, 1);
    keypad(pad, TRUE);
    nodelay(pad, TRUE);
    std::string keys;
    for (int key = wgetch(pad); key != ERR; key = wgetch(pad))
        keys += key < 256 ? std::string(1, static_cast<char>(key)) : std::to_string(key);
    delwin(pad);
    return keys;
}

class OnResize : public testing::TestWithParam<Scene> {
  protected:
    // Shows the scene and does something while it stands on the screen.
    void whileItStands(const std::function<void()>& work) {
        screen_state = scene.isScreen() ? scene.state : state_password;
        wizard.playWith(scene.show, {scene.keys, [&] {
                                         EXPECT_EQ(screen_state, scene.state);
                                         work();
                                     }});
    }

    // The services, relay and sendmail screens each swallow one at every resize; the current screen
    // does so too where it is none of those, and so does a message or a question.
    size_t keysSwallowed() const {
        const bool one_more =
            scene.isScreen() ? !scene.isPlacedAlways() : scene.isQuestionOrMessage();
        return one_more ? 4 : 3;
    }

    const Scene& scene = GetParam();
    WizardRig wizard{state_password};
};

TEST_P(OnResize, swallows_one_key_for_each_screen_and_dialog_concerned) {
    whileItStands([this] {
        wizard.terminal.type("abcdefgh");
        on_resize(SIGWINCH);
        EXPECT_EQ(unread_keys(), std::string("abcdefgh").substr(keysSwallowed()));

        // The key that a new size produces is the first.
        wizard.terminal.type("abcdefgh");
        wizard.resize(smallest);
        EXPECT_EQ(unread_keys(), std::string("abcdefgh").substr(keysSwallowed() - 1));
    });
}

TEST_P(OnResize, shows_nothing_of_the_hidden_screens_not_even_for_a_moment) {
    whileItStands([this] {
        const size_t before = wizard.outputBytes().size();
        wizard.resize(smallest);
        wizard.resize({30, 90});
        const std::string drawn = wizard.outputBytes().substr(before);
        const auto expect_hidden = [&](int state, const std::string& text) {
            EXPECT_EQ(drawn.find(text) != std::string::npos, screen_state == state) << text;
        };
        expect_hidden(state_services, "Services");
        expect_hidden(state_relay, "Relay");
        expect_hidden(state_sendmail, "Sendmail");
        expect_hidden(state_password, "Validate:");
        expect_hidden(state_domain, "Postmaster");
    });
}

TEST_P(OnResize, leaves_only_a_message_or_question_in_no_delay_mode_and_the_keypad_on) {
    whileItStands([this] {
        wizard.resize(smallest);
        int without_delay = 0;
        for (PANEL* panel = panel_above(nullptr); panel != nullptr; panel = panel_above(panel)) {
            if (is_nodelay(panel_window(panel))) {
                ++without_delay;
                EXPECT_TRUE(is_keypad(panel_window(panel)));
            }
        }
        EXPECT_EQ(without_delay, scene.isQuestionOrMessage() ? 1 : 0);
        for (const auto& screen : built_screens) {
            if (screen != nullptr) {
                EXPECT_FALSE(is_nodelay(screen->getFrame().getCursesWindow()));
            }
        }
        if (scene.isScreen()) {
            EXPECT_TRUE(is_keypad(built_screens[screen_state]->getFrame().getCursesWindow()));
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Scenes, OnResize, testing::ValuesIn(screens_and_dialogs()), CaseName());

TEST(OnResizeOfAnyScreen, stores_the_size_draws_the_frame_and_keeps_the_error_number) {
    WizardRig wizard(state_password);
    wizard.terminal.resize(33, 101);
    errno = EDOM;
    on_resize(SIGWINCH);
    EXPECT_EQ(errno, EDOM);
    EXPECT_EQ(screen_rows, 33);
    EXPECT_EQ(screen_cols, 101);
    const ScreenImage image = wizard.image();
    const std::string ruler(101, '-');
    EXPECT_EQ(image.find("Welcome to the Teluma Config Utility (v6.0.0)"), (Position{0, 0}));
    EXPECT_EQ(image.rowText(1), ruler);
    EXPECT_EQ(image.rowText(31), ruler);
    EXPECT_EQ(image.find("Use TAB key to jump from one control to another"), (Position{32, 0}));
    EXPECT_EQ(image.cell(0, 100).background, COLOR_BLUE);
    EXPECT_EQ(image.cell(32, 100).background, COLOR_BLUE);
}

}  // namespace
