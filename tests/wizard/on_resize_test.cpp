// What the handler of a resize does besides drawing: the keys that it swallows, the modes that it
// leaves windows in, what it leaves alone.

#include <curses.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include "screens/screen.h"
#include "screens/screen_table.h"
#include "tests/support/case_name.h"
#include "tests/wizard/scenes.h"
#include "tests/wizard/screen_session.h"
#include "ui/main_window.h"
#include "ui/message_dialogs.h"
#include "wizard/base/screen_state.h"
#include "wizard/terminal_session.h"

namespace {

constexpr Size smaller = {20, 72};

class OnResize : public testing::TestWithParam<Scene> {
  protected:
    // Shows the scene and does something while it stands on the screen.
    void whileItStands(const std::function<void()>& work) {
        session.terminal.type(GetParam().keys_before);
        session.waits.then([&] {
            EXPECT_EQ(screen_state, GetParam().state);
            work();
            session.terminal.type(GetParam().keys_after);
        });
        GetParam().run();
    }

    bool isQuestionOrMessage() const {
        return GetParam().state == state_message || GetParam().state == state_yes_no;
    }

    bool isDialog() const { return GetParam().state >= screen_count; }

    // The services, relay and sendmail screens each swallow one at every resize; the current screen
    // does so too where it is none of those, and so does a message or a question.
    size_t keysSwallowed() const {
        const int state = GetParam().state;
        if (isDialog())
            return isQuestionOrMessage() ? 4 : 3;
        return state == state_services || state == state_relay || state == state_sendmail ? 3 : 4;
    }

    static std::string unread() {
        std::string keys;
        for (const int key : ScreenSession::takeUnreadKeys())
            keys += key < 256 ? std::string(1, static_cast<char>(key))
                              : "<" + std::to_string(key) + ">";
        return keys;
    }

    ScreenSession session;
};

TEST_P(OnResize, swallows_one_key_for_each_screen_and_dialog_concerned) {
    whileItStands([this] {
        session.terminal.type("abcdefgh");
        on_resize(SIGWINCH);
        EXPECT_EQ(unread(), std::string("abcdefgh").substr(keysSwallowed()));
    });
}

TEST_P(OnResize, the_key_that_the_new_size_produces_is_the_first_one_swallowed) {
    whileItStands([this] {
        session.terminal.type("abcdefgh");
        session.resize(smaller);
        EXPECT_EQ(unread(), std::string("abcdefgh").substr(keysSwallowed() - 1));
    });
}

TEST_P(OnResize, shows_nothing_of_the_hidden_screens_not_even_for_a_moment) {
    whileItStands([this] {
        const size_t before = session.terminal.outputBytes().size();
        session.resize(smaller);
        session.resize({30, 90});
        const std::string drawn = session.terminal.outputBytes().substr(before);
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

TEST_P(OnResize, only_a_message_or_question_is_left_in_no_delay_mode) {
    whileItStands([this] {
        session.resize(smaller);
        if (dialog_frame() != nullptr) {
            WINDOW* window = dialog_frame()->getCursesWindow();
            EXPECT_EQ(is_nodelay(window), isQuestionOrMessage());
            EXPECT_TRUE(is_keypad(window));
        }
        if (pending_frame() != nullptr) {
            EXPECT_FALSE(is_nodelay(pending_frame()->getCursesWindow()));
        }
        for (int state = 0; state < screen_count; ++state) {
            if (built_screens[state] != nullptr) {
                EXPECT_FALSE(is_nodelay(built_screens[state]->getFrame().getCursesWindow()))
                    << state;
            }
        }
    });
}

TEST_P(OnResize, keypad_is_on_for_every_window_that_swallowed_a_key) {
    whileItStands([this] {
        session.resize(smaller);
        std::vector<int> states = {state_services, state_relay, state_sendmail};
        if (!isDialog())
            states.push_back(screen_state);
        for (const int state : states)
            EXPECT_TRUE(is_keypad(built_screens[state]->getFrame().getCursesWindow())) << state;
    });
}

std::vector<Scene> one_scene_of_each() {
    std::vector<Scene> scenes = first_screen_scenes();
    for (const Scene& dialog : dialog_scenes())
        scenes.push_back(dialog);
    return scenes;
}

INSTANTIATE_TEST_SUITE_P(Scene, OnResize, testing::ValuesIn(one_scene_of_each()), CaseName());

class OnResizeOfAnyScreen : public testing::Test {
  protected:
    ScreenSession session;
};

TEST_F(OnResizeOfAnyScreen, the_new_size_is_stored) {
    session.resize({33, 101});
    EXPECT_EQ(screen_rows, 33);
    EXPECT_EQ(screen_cols, 101);
}

TEST_F(OnResizeOfAnyScreen, title_and_help_lines_span_the_new_width) {
    session.resize({33, 101});
    const ScreenImage image = session.terminal.image();
    const std::string ruler(101, '-');
    EXPECT_EQ(image.find("Welcome to the Teluma Config Utility (v6.0.0)"), (Position{0, 0}));
    EXPECT_EQ(image.rowText(1), ruler);
    EXPECT_EQ(image.rowText(31), ruler);
    EXPECT_EQ(image.find("Use TAB key to jump from one control to another"), (Position{32, 0}));
    EXPECT_EQ(image.cell(0, 100).background, COLOR_BLUE);
    EXPECT_EQ(image.cell(32, 100).background, COLOR_BLUE);
}

TEST_F(OnResizeOfAnyScreen, the_code_that_was_interrupted_finds_its_error_number) {
    session.terminal.resize(33, 101);
    errno = EDOM;
    on_resize(SIGWINCH);
    EXPECT_EQ(errno, EDOM);
}

}  // namespace
