#include "ui/button.h"

#include <string>

#include "tests/ui/ui_test.h"

namespace {

/// A button as the dialogs have them.
class ButtonTest : public UiTest {
  protected:
    ButtonTest() : button(root(), 2, 3, 3, 6, "OK", 3) {}

    /// The looks of its middle line.
    ScreenImage middle() { return drawn(button).region(1, 0, 1, 6); }

    Button button;
};

/// A button of a height and width, with a caption, and what it looks like.
struct Captioned {
    int height;
    int width;
    const char* caption;
    const char* picture;
};

TEST_F(ButtonTest, has_its_caption_in_the_middle_unless_it_is_too_long) {
    for (const Captioned& captioned : {
             Captioned{3, 6, "OK", "\n\n  OK\n\n"},
             Captioned{3, 6, "Yes", "\n\n Yes\n\n"},
             Captioned{4, 6, "OK", "\n\n  OK\n\n\n"},
             Captioned{3, 6, "Cancel", "\n\nCancel\n\n"},
             Captioned{3, 6, "Cancels", "\n\n\n\n"},
             Captioned{3, 6, "Cancel it", "\n\n\n\n"},
             Captioned{3, 6, "Cancel all of it", "\n\n\n\n"},
             Captioned{1, 6, "%s%d", " %s%d\n"},
         }) {
        std::string caption = captioned.caption;
        Button copied(root(), 10, 3, captioned.height, captioned.width, caption.c_str(), 3);
        caption.assign(caption.size(), '!');
        EXPECT_PICTURE(drawn(copied), captioned.picture);
    }
}

TEST_F(ButtonTest, is_black_on_red_at_first_above_and_below_its_caption_too) {
    EXPECT_COLOURS(drawn(button), "rrrrrr\nrrrrrr\nrrrrrr\n");
}

TEST_F(ButtonTest, its_caption_has_the_look_that_was_set_last) {
    button.setLook(1, 1);
    EXPECT_COLOURS(middle(), "rrKKrr\n");
    button.setLook(1, 0);
    EXPECT_COLOURS(middle(), "rrkkrr\n");
    button.setLook(-1, 1);
    EXPECT_COLOURS(middle(), "rrRRrr\n");
    button.setLook(3, 0);
    EXPECT_COLOURS(middle(), "rrrrrr\n");
    button.setFocused(true);
    EXPECT_COLOURS(middle(), "rrKKrr\n");
    button.setFocused(false);
    EXPECT_COLOURS(middle(), "rrrrrr\n");
}

TEST_F(ButtonTest, drawing_leaves_neither_weight_nor_caption_colour_switched_on) {
    button.setLook(1, 1);
    button.draw();
    mvwaddch(button.getCursesWindow(), 0, 0, 'x');
    EXPECT_COLOURS(look(button).region(0, 0, 1, 6), "rrrrrr\n");
}

TEST_F(ButtonTest, the_cursor_is_placed_right_after_the_caption_and_does_not_show) {
    button.draw();
    button.placeCursor();
    EXPECT_EQ(cursor_in(button.getCursesWindow()), (Position{1, 4}));
    EXPECT_FALSE(button.showsCursor());
}

}  // namespace
