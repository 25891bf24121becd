// What the handler of a resize does: with dialogs and pending boxes, with the keys that it swallows
// and the modes that it leaves windows in.

#include <gtest/gtest.h>
#include <panel.h>

#include <cerrno>
#include <csignal>

#include "apply/progress_list.h"
#include "screens/screen.h"
#include "screens/screen_table.h"
#include "tests/screens/screen_facts.h"
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

    bool isScreen() const { return state < screen_count; }
    bool isQuestionOrMessage() const { return state == state_message || state == state_yes_no; }
    bool isPlacedAlways() const {
        return state == state_services || state == state_relay || state == state_sendmail;
    }
};

void ask_question() {
    askYesNo(
        "Selecting 127.0.0.1 will enable access to SMTP service \tonly from this machine and "
        "not remotely from other machines. Are you sure?",
        "WARNING!");
}

void warn_of_port() {
    askRetryOrBack("There is already an application that binds the 25 port.", "Warning!",
                   "127.0.0.1", 0);
}

// A pending box takes no keys; something else goes on while it stands. Here that is a wait for one.
void show_pending() {
    showPending(std::string(250, 'm').c_str(), "Operation pending!");
    read_key(*main_window);
}

void show_progress() {
    showApplyPending("Please wait until the changes are applied!", "Operations pending");
    progress_show_all();
    progress_add("pass", "--> setting admin password");
    progress_done("pass");
    progress_add("login", "--> connecting to CLI");
    progress_wait_for_ok();
}

std::vector<Scene> dialogs() {
    return {{"message", state_message, [] { showMessage("Passwords do not match!", "Error!"); }},
            {"question", state_yes_no, ask_question},
            {"warning", state_retry_back, warn_of_port},
            {"pending", state_pending, show_pending},
            {"progress", state_pending, show_progress}};
}

std::vector<Scene> screens_and_dialogs() {
    std::vector<Scene> scenes = dialogs();
    for (const ScreenFacts& screen : all_screens())
        scenes.push_back({screen.name, screen.state, [] { run_screens(); }});
    return scenes;
}

ScreenImage resized(const Scene& scene, const Size& first, const std::vector<Size>& sizes) {
    WizardRig wizard(state_password, first);
    wizard.playWith(scene.show, {[&] {
                        for (const Size& size : sizes) wizard.resize(size);
                    }});
    return wizard.image();
}

TEST(ResizedDialog, looks_fresh) {
    const std::vector<std::vector<Size>> changes = {
        {usual, large}, {usual, smallest, large}, {large, smallest}, {usual, {60, 72}, {60, 81}}};
    for (const Scene& dialog : dialogs()) {
        SCOPED_TRACE(dialog.name);
        for (const std::vector<Size>& sizes : changes)
            EXPECT_SAME_LOOK(resized(dialog, sizes.back(), {}),
                             resized(dialog, sizes.front(), {sizes.begin() + 1, sizes.end()}));
    }
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
        wizard.playWith(scene.show, {[&] {
                            EXPECT_EQ(screen_state, scene.state);
                            work();
                        }});
    }

    const Scene& scene = GetParam();
    WizardRig wizard{state_password};
};

// The services, relay and sendmail screens each swallow one at every resize; the current screen
// does so too where it is none of those, and so does a message or a question.
TEST_P(OnResize, swallows_one_key_for_each_screen_and_dialog_concerned) {
    const bool one_more = scene.isScreen() ? !scene.isPlacedAlways() : scene.isQuestionOrMessage();
    const std::string left = one_more ? "efgh" : "defgh";
    whileItStands([&] {
        wizard.terminal.type("abcdefgh");
        on_resize(SIGWINCH);
        EXPECT_EQ(unread_keys(), left);

        // The key that a new size produces is the first.
        wizard.terminal.type("bcdefgh");
        wizard.resize(smallest);
        EXPECT_EQ(unread_keys(), left);
    });
}

TEST_P(OnResize, shows_nothing_of_the_hidden_screens_not_even_for_a_moment) {
    whileItStands([this] {
        const size_t before = wizard.terminal.outputBytes().size();
        wizard.resize(smallest);
        wizard.resize({30, 90});
        const std::string drawn = wizard.terminal.outputBytes().substr(before);
        const std::pair<int, const char*> texts[] = {{state_services, "Services"},
                                                     {state_relay, "Relay"},
                                                     {state_sendmail, "Sendmail"},
                                                     {state_password, "Validate:"},
                                                     {state_domain, "Postmaster"}};
        for (const auto& [state, text] : texts)
            EXPECT_EQ(drawn.find(text) != std::string::npos, screen_state == state) << text;
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

TEST(OnResizeOfAnyScreen, leaves_the_cursor_to_it_when_a_hidden_one_is_placed) {
    WizardRig wizard(state_services);
    wizard.play({"\t\t", Key::enter, Key::tab, [&] { wizard.resize(large); }});
    EXPECT_EQ(screen_state, state_smtp);
    EXPECT_TRUE(wizard.image().cursor().visible);
}

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
