#include <type_traits>

#include "tests/support/case_name.h"
#include "tests/support/screen_text.h"
#include "tests/ui/ui_test.h"
#include "ui/button.h"
#include "ui/choice_list.h"
#include "ui/format_label.h"
#include "ui/label.h"
#include "ui/line_breaker.h"
#include "ui/list.h"
#include "ui/pass_text_field.h"

namespace {

const char* const entries[] = {"one", "two"};

/// One widget of each class, by the class's name.
struct WidgetKind {
    const char* name;
    Window* (*make)(Window* parent);
};

void PrintTo(const WidgetKind& kind, std::ostream* out) {
    *out << kind.name;
}

const WidgetKind kinds[] = {
    {"Window",
     [](Window* parent) {
         auto* window = new Window(parent, 1, 1, 5, 10);
         window->setTitle("Title", 2);
         window->create();
         return window;
     }},
    {"Button", [](Window* parent) -> Window* { return new Button(parent, 1, 1, 3, 6, "OK", 3); }},
    {"TextField", [](Window* parent) -> Window* { return new TextField(parent, 1, 1, 9, 5, 1); }},
    {"PassTextField",
     [](Window* parent) -> Window* { return new PassTextField(parent, 1, 1, 9, 5, 1); }},
    {"Label", [](Window* parent) -> Window* { return new Label(parent, 1, 1, "Label:"); }},
    {"FormatLabel",
     [](Window* parent) -> Window* {
         return new FormatLabel("some words", 1, 1, parent, 5, break_between_words);
     }},
    {"List", [](Window* parent) -> Window* { return new List(parent, 2, entries, 1, 1, 2, 1); }},
    {"ChoiceList",
     [](Window* parent) -> Window* {
         return new ChoiceList(parent, 2, entries, nullptr, 1, 1, 2, 1);
     }},
};

class EveryWidget : public UiTest, public testing::WithParamInterface<WidgetKind> {};

TEST_P(EveryWidget, shows_its_own_drawing_when_drawn_as_a_window) {
    Window* widget = GetParam().make(root());
    const ScreenImage before = shown();
    widget->setColors(2, 2, 0);
    widget->draw();
    EXPECT_NE(to_text(before), to_text(shown()));
    delete widget;
}

TEST_P(EveryWidget, has_a_curses_window_and_a_panel_of_its_own_on_top_of_the_stack) {
    Window* first = GetParam().make(root());
    Window* widget = GetParam().make(root());
    EXPECT_EQ(panels_shown(), 2);
    EXPECT_EQ(panel_window(panel_below(nullptr)), widget->getCursesWindow());
    EXPECT_NE(widget->getCursesWindow(), first->getCursesWindow());
    delete widget;
    delete first;
}

// What is left behind would be a leak.
TEST_P(EveryWidget, is_destroyed_whole_through_a_pointer_to_a_window) {
    Window* widget = GetParam().make(root());
    widget->draw();
    delete widget;
    EXPECT_EQ(panels_shown(), 0);
    EXPECT_PICTURE(shown(0, 0, 2, 12), "\n\n\n");
}

TEST_P(EveryWidget, has_no_size_once_its_curses_window_is_released) {
    Window* widget = GetParam().make(root());
    EXPECT_GT(widget->getHeight(), 0);
    EXPECT_GT(widget->getWidth(), 0);
    widget->releaseCursesWindow();
    EXPECT_EQ(widget->getCursesWindow(), nullptr);
    EXPECT_EQ(widget->getHeight(), -1);
    EXPECT_EQ(widget->getWidth(), -1);
    delete widget;
}

INSTANTIATE_TEST_SUITE_P(Kinds, EveryWidget, testing::ValuesIn(kinds), CaseName());

TEST(WidgetClasses, all_derive_from_window_and_the_password_field_from_the_text_field) {
    EXPECT_TRUE((std::is_base_of_v<Window, Button>));
    EXPECT_TRUE((std::is_base_of_v<Window, TextField>));
    EXPECT_TRUE((std::is_base_of_v<TextField, PassTextField>));
    EXPECT_TRUE((std::is_base_of_v<Window, Label>));
    EXPECT_TRUE((std::is_base_of_v<Window, FormatLabel>));
    EXPECT_TRUE((std::is_base_of_v<Window, List>));
    EXPECT_TRUE((std::is_base_of_v<Window, ChoiceList>));
    EXPECT_TRUE(std::is_polymorphic_v<Window>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Window>);
}

}  // namespace
