// What all widgets have in common, buttons, and labels of one line.

#include <cxxabi.h>

#include <string>
#include <tuple>
#include <typeinfo>

#include "tests/support/screen_text.h"
#include "tests/ui/ui_test.h"
#include "ui/button.h"
#include "ui/label.h"
#include "ui/line_breaker.h"
#include "ui/list.h"
#include "ui/text_field.h"

namespace {

// The class that a class derives from, by the ABI's record of it.
const std::type_info& base_of(const std::type_info& type) {
    return *dynamic_cast<const abi::__si_class_type_info&>(type).__base_type;
}

using WidgetTest = UiTest;

TEST_F(WidgetTest, is_a_window_but_that_a_password_field_is_a_field) {
    for (const std::type_info* type : {&typeid(Button), &typeid(TextField), &typeid(Label),
                                       &typeid(FormatLabel), &typeid(List), &typeid(ChoiceList)})
        EXPECT_EQ(base_of(*type), typeid(Window)) << type->name();
    EXPECT_EQ(base_of(typeid(PassTextField)), typeid(TextField));
}

// What is left behind would be a leak.
TEST_F(WidgetTest, draws_on_a_panel_of_its_own_and_is_destroyed_whole_as_a_window) {
    const char* const entries[] = {"one", "two"};
    std::unique_ptr<Window> widgets[] = {
        std::make_unique<Button>(root(), 1, 1, 3, 6, "OK", 3),
        std::make_unique<TextField>(root(), 1, 1, 9, 5, 1),
        std::make_unique<PassTextField>(root(), 1, 1, 9, 5, 1),
        std::make_unique<Label>(root(), 1, 1, "Label:"),
        std::make_unique<FormatLabel>("some words", 1, 1, root(), 5, break_between_words),
        std::make_unique<List>(root(), 2, entries, 1, 1, 2, 1),
        std::make_unique<ChoiceList>(root(), 2, entries, nullptr, 1, 1, 2, 1)};
    EXPECT_EQ(panels_shown(), 7);
    EXPECT_EQ(panel_window(panel_below(nullptr)), widgets[6]->getCursesWindow());
    for (const auto& widget : widgets) widget->hide();
    const std::string before = to_text(shown());
    for (auto& widget : widgets) {
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

/// A button as the dialogs have them.
class ButtonTest : public UiTest {
  protected:
    ButtonTest() : button(root(), 2, 3, 3, 6, "OK", 3) {}

    Button button;
};

TEST_F(ButtonTest, has_its_caption_in_the_middle_unless_it_is_too_long) {
    for (const auto& [height, caption, picture] : {
             std::tuple{3, "OK", "\n\n  OK\n\n"},
             {3, "Yes", "\n\n Yes\n\n"},
             {4, "OK", "\n\n  OK\n\n\n"},
             {3, "Cancel", "\n\nCancel\n\n"},
             {3, "Cancels", "\n\n\n\n"},
             {3, "Cancel it", "\n\n\n\n"},
             {3, "Cancel all of it", "\n\n\n\n"},
             {1, "%s%d", " %s%d"},
         }) {
        std::string text = caption;
        Button copied(root(), 10, 3, height, 6, text.c_str(), 3);
        text.assign(text.size(), '!');
        EXPECT_PICTURE(drawn(copied), picture);
    }
}

TEST_F(ButtonTest, is_black_on_red_but_for_its_caption_which_has_the_look_that_was_set_last) {
    const auto expect_caption = [this](const std::string& looks) {
        EXPECT_COLOURS(drawn(button), "rrrrrr\nrr" + looks + "rr\nrrrrrr");
    };
    expect_caption("rr");
    button.setLook(1, 1);
    expect_caption("KK");
    button.setLook(1, 0);
    expect_caption("kk");
    button.setLook(-1, 1);
    expect_caption("RR");
    button.setLook(3, 0);
    expect_caption("rr");
    button.setFocused(true);
    expect_caption("KK");
    mvwaddch(button.getCursesWindow(), 1, 0, 'x');
    EXPECT_COLOURS(look(button).region(1, 0, 1, 2), "rr");
    button.setFocused(false);
    expect_caption("rr");
}

TEST_F(ButtonTest, takes_no_key_and_has_the_cursor_right_after_its_caption_without_showing_it) {
    EXPECT_EQ(button.onKey(' '), ' ');
    button.placeCursor();
    EXPECT_EQ(cursor_in(button), (Position{1, 4}));
    EXPECT_FALSE(button.showsCursor());
}

class LabelTest : public UiTest {
  protected:
    LabelTest() : label(root(), 2, 3, "Port:") { label.setColors(2, 1, 0); }

    Label label;
};

TEST_F(LabelTest, is_one_line_as_wide_as_its_text_at_its_place_of_the_parent) {
    Window frame(root(), 4, 10, 5, 20);
    frame.create();
    std::string text = "100%s%d:";
    Label copied(&frame, 1, 2, text.c_str());
    text.assign(text.size(), '!');
    for (const bool focused : {false, true}) {
        copied.setFocused(focused);
        copied.draw();
        EXPECT_EQ(shown().find("100%s%d:"), (Position{5, 12}));
    }
    EXPECT_EQ(size_of(copied), (Position{1, 8}));
}

TEST_F(LabelTest, a_highlight_has_its_pair_and_what_follows_it_the_background_pair) {
    EXPECT_COLOURS(drawn(label), "kkkkk");
    for (const auto& [pair, length, looks] : {std::tuple{3, 2, "rrbbb"},
                                              {0, 2, "kkbbb"},
                                              {3, 0, "bbbbb"},
                                              {3, 50, "rrrrr"},
                                              {2, 5, "bbbbb"},
                                              {2, 4, "bbbbb"},
                                              {3, -1, "bbbbb"},
                                              {-1, 4, "kkkkk"}}) {
        label.setHighlight(pair, length);
        EXPECT_PICTURE(drawn(label), "Port:");
        EXPECT_COLOURS(look(label), looks) << pair << " " << length;
    }
}

TEST_F(LabelTest, of_the_focused_field_is_white_on_black_but_for_its_colon_and_goes_back) {
    label.setColors(2, 2, 1);
    const ScreenImage before = drawn(label);
    label.setFocused(true);
    EXPECT_COLOURS(drawn(label), "KKKKB");
    label.setFocused(false);
    EXPECT_SAME_LOOK(before, drawn(label));
}

}  // namespace
