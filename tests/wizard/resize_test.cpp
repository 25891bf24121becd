// What stands on the screen after the terminal has been resized, screen by screen and dialog by
// dialog.

#include <curses.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/case_name.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "tests/wizard/scenes.h"
#include "tests/wizard/screen_session.h"

namespace {

struct Looks {
    ScreenImage by_curses;    // what curses believes to be there
    ScreenImage on_terminal;  // what is
};

// What the scene looks like once the terminal has had these sizes one after the other while it
// stands there.
Looks look_at(const Scene& scene, ScreenSession& session, const std::vector<Size>& sizes) {
    Looks looks{ScreenImage(1, 1), ScreenImage(1, 1)};
    session.terminal.type(scene.keys_before);
    session.waits.then([&] {
        for (const Size& size : sizes)
            session.resize(size);
        looks = {session.terminal.image(), session.terminal.terminalImage()};
        session.terminal.type(scene.keys_after);
    });
    scene.run();
    return looks;
}

Looks fresh_look(const Scene& scene, Size size) {
    ScreenSession session(size);
    return look_at(scene, session, {});
}

Looks resized_look(const Scene& scene, Size first, const std::vector<Size>& sizes) {
    ScreenSession session(first);
    return look_at(scene, session, sizes);
}

// What the scene looks like when it comes after another screen during which the size has changed.
Looks look_after_resize(const Scene& scene, Size first, Size size) {
    ScreenSession session(first);
    look_at(screen_scene("password", 0), session, {size});
    return look_at(scene, session, {});
}

void expect_same(const Looks& expected, const Looks& looks) {
    EXPECT_SAME_LOOK(expected.by_curses, looks.by_curses);
    EXPECT_SAME_LOOK(expected.on_terminal, looks.on_terminal);
}

void expect_same_as_fresh(const Scene& scene, Size first, const std::vector<Size>& sizes) {
    SCOPED_TRACE(testing::Message()
                 << "from " << first.cols << "x" << first.rows << " to " << sizes.back().cols << "x"
                 << sizes.back().rows << " in " << sizes.size() << " steps");
    expect_same(fresh_look(scene, sizes.back()), resized_look(scene, first, sizes));
}

constexpr Size smallest = {20, 72};
constexpr Size usual = {24, 80};
constexpr Size large = {60, 200};

std::vector<Scene> all_scenes() {
    std::vector<Scene> scenes = screen_scenes();
    for (const Scene& dialog : dialog_scenes())
        scenes.push_back(dialog);
    return scenes;
}

class Resized : public testing::TestWithParam<Scene> {};

TEST_P(Resized, in_one_step_it_looks_as_drawn_afresh) {
    expect_same_as_fresh(GetParam(), usual, {large});
    expect_same_as_fresh(GetParam(), usual, {smallest});
    expect_same_as_fresh(GetParam(), large, {smallest});
    expect_same_as_fresh(GetParam(), smallest, {large});
}

TEST_P(Resized, in_several_steps_it_looks_as_drawn_afresh) {
    expect_same_as_fresh(GetParam(), usual, {smallest, large, usual});
    expect_same_as_fresh(GetParam(), usual, {{24, 72}, {20, 72}, {60, 72}, {60, 81}});
}

TEST_P(Resized, while_another_screen_was_shown_it_looks_as_drawn_afresh) {
    for (const Size size : {smallest, large})
        expect_same(fresh_look(GetParam(), size), look_after_resize(GetParam(), usual, size));
}

INSTANTIATE_TEST_SUITE_P(Scene, Resized, testing::ValuesIn(all_scenes()), CaseName());

// The pictures that were looked at with a ruler; all others are compared with fresh ones.

TEST(ResizedPicture, the_password_window_is_in_the_middle_with_its_fields_behind_their_labels) {
    EXPECT_SCREEN(resized_look(screen_scene("password", 0), large, {smallest}).on_terminal,
                  "golden/password_resized");
}

TEST(ResizedPicture, the_cursor_is_hidden_while_a_button_of_the_password_window_has_the_focus) {
    EXPECT_SCREEN(resized_look(screen_scene("password", 2), large, {smallest}).on_terminal,
                  "golden/password_next_resized");
}

TEST(ResizedPicture, the_domain_window_is_in_the_middle_and_the_cursor_in_the_third_field) {
    EXPECT_SCREEN(resized_look(screen_scene("domain", 2), large, {smallest}).on_terminal,
                  "golden/domain_resized");
}

TEST(ResizedPicture, the_webadmin_window_is_in_the_middle_and_the_cursor_in_the_port) {
    EXPECT_SCREEN(resized_look(screen_scene("webadmin", 1), large, {smallest}).on_terminal,
                  "golden/webadmin_resized");
}

TEST(ResizedPicture, the_question_stays_on_top_in_the_middle_with_the_cursor_hidden) {
    EXPECT_SCREEN(resized_look(dialog_scene("no"), large, {smallest}).on_terminal,
                  "golden/question_resized");
}

}  // namespace
