#include <type_traits>

#include "tests/support/screen_text.h"
#include "tests/ui/ui_test.h"
#include "ui/button.h"
#include "ui/label.h"
#include "ui/line_breaker.h"
#include "ui/list.h"
#include "ui/text_field.h"

namespace {

static_assert(std::is_base_of_v<TextField, PassTextField>);

using Widget = std::unique_ptr<Window>;

/// One widget of each class.
class EveryWidget : public UiTest {
  protected:
    const char* const entries[2] = {"one", "two"};
    Widget widgets[7] = {
        std::make_unique<Button>(root(), 1, 1, 3, 6, "OK", 3),
        std::make_unique<TextField>(root(), 1, 1, 9, 5, 1),
        std::make_unique<PassTextField>(root(), 1, 1, 9, 5, 1),
        std::make_unique<Label>(root(), 1, 1, "Label:"),
        std::make_unique<FormatLabel>("some words", 1, 1, root(), 5, break_between_words),
        std::make_unique<List>(root(), 2, entries, 1, 1, 2, 1),
        std::make_unique<ChoiceList>(root(), 2, entries, nullptr, 1, 1, 2, 1)};
};

// What is left behind would be a leak.
TEST_F(EveryWidget, draws_on_a_panel_of_its_own_and_is_destroyed_whole_as_a_window) {
    EXPECT_EQ(panels_shown(), 7);
    EXPECT_EQ(panel_window(panel_below(nullptr)), widgets[6]->getCursesWindow());
    for (const Widget& widget : widgets) widget->hide();
    const std::string before = to_text(shown());
    for (Widget& widget : widgets) {
        widget->setColors(2, 2, 0);
        widget->draw();
        widget->show();
        EXPECT_EQ(panels_shown(), 1);
        EXPECT_NE(to_text(shown()), before);
        widget.reset();
    }
    EXPECT_EQ(panels_shown(), 0);
    EXPECT_EQ(shown().text().find_first_not_of(" \n"), std::string::npos);
}

TEST_F(EveryWidget, has_no_size_once_its_curses_window_is_released) {
    for (const Widget& widget : widgets) {
        EXPECT_GT(widget->getHeight(), 0);
        EXPECT_GT(widget->getWidth(), 0);
        widget->releaseCursesWindow();
        EXPECT_EQ(widget->getCursesWindow(), nullptr);
        EXPECT_EQ(widget->getHeight(), -1);
        EXPECT_EQ(widget->getWidth(), -1);
    }
}

}  // namespace
