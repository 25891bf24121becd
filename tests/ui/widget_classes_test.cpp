#include <type_traits>

#include "tests/support/case_name.h"
#include "tests/support/screen_text.h"
#include "tests/ui/ui_test.h"
#include "ui/button.h"
#include "ui/label.h"
#include "ui/line_breaker.h"
#include "ui/list.h"
#include "ui/text_field.h"

namespace {

static_assert(std::is_base_of_v<Window, Button> && std::is_base_of_v<Window, Label> &&
              std::is_base_of_v<Window, FormatLabel> && std::is_base_of_v<Window, List> &&
              std::is_base_of_v<Window, ChoiceList> && std::is_base_of_v<Window, TextField> &&
              std::is_base_of_v<TextField, PassTextField> && std::has_virtual_destructor_v<Window>);

using Widget = std::unique_ptr<Window>;
const char* const entries[] = {"one", "two"};

Widget titled_window(Window* parent) {
    auto window = std::make_unique<Window>(parent, 1, 1, 5, 10);
    window->setTitle("Title", 2);
    window->create();
    return window;
}

/// One widget of each class, by the class's name.
struct WidgetKind {
    const char* name;
    Widget (*make)(Window* parent);
};

void PrintTo(const WidgetKind& kind, std::ostream* out) {
    *out << kind.name;
}

const WidgetKind kinds[] = {
    {"Window", titled_window},
    {"Button", [](Window* p) -> Widget { return Widget(new Button(p, 1, 1, 3, 6, "OK", 3)); }},
    {"TextField", [](Window* p) -> Widget { return Widget(new TextField(p, 1, 1, 9, 5, 1)); }},
    {"PassTextField",
     [](Window* p) -> Widget { return Widget(new PassTextField(p, 1, 1, 9, 5, 1)); }},
    {"Label", [](Window* p) -> Widget { return Widget(new Label(p, 1, 1, "Label:")); }},
    {"FormatLabel",
     [](Window* p) -> Widget {
         return Widget(new FormatLabel("some words", 1, 1, p, 5, break_between_words));
     }},
    {"List", [](Window* p) -> Widget { return Widget(new List(p, 2, entries, 1, 1, 2, 1)); }},
    {"ChoiceList",
     [](Window* p) -> Widget {
         return Widget(new ChoiceList(p, 2, entries, nullptr, 1, 1, 2, 1));
     }},
};

class EveryWidget : public UiTest, public testing::WithParamInterface<WidgetKind> {};

// What is left behind would be a leak.
TEST_P(EveryWidget, draws_on_a_panel_of_its_own_and_is_destroyed_whole_as_a_window) {
    const std::string before = to_text(shown());
    Widget first = GetParam().make(root());
    Widget widget = GetParam().make(root());
    EXPECT_EQ(panels_shown(), 2);
    EXPECT_EQ(panel_window(panel_below(nullptr)), widget->getCursesWindow());
    EXPECT_NE(widget->getCursesWindow(), first->getCursesWindow());
    widget->setColors(2, 2, 0);
    widget->draw();
    EXPECT_NE(to_text(shown()), before);
    widget.reset();
    first.reset();
    EXPECT_EQ(panels_shown(), 0);
    EXPECT_EQ(shown().text().find_first_not_of(" \n"), std::string::npos);
}

TEST_P(EveryWidget, has_no_size_once_its_curses_window_is_released) {
    const Widget widget = GetParam().make(root());
    EXPECT_GT(widget->getHeight(), 0);
    EXPECT_GT(widget->getWidth(), 0);
    widget->releaseCursesWindow();
    EXPECT_EQ(widget->getCursesWindow(), nullptr);
    EXPECT_EQ(widget->getHeight(), -1);
    EXPECT_EQ(widget->getWidth(), -1);
}

INSTANTIATE_TEST_SUITE_P(Kinds, EveryWidget, testing::ValuesIn(kinds), CaseName());

}  // namespace
