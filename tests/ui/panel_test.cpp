#include <utility>

#include "tests/ui/ui_test.h"
#include "ui/keys.h"
#include "ui/window.h"

namespace {

/// A window full of one letter.
class Tile : public Window {
  public:
    Tile(Window* parent, int row, int col, int height, int width, char tileLetter)
        : Window(parent, row, col, height, width), letter(tileLetter) {
        create();
        draw();
    }

    void draw() override {
        for (int line = 0; line < getHeight(); ++line)
            mvwhline(cursesWindow, line, 0, static_cast<chtype>(letter), getWidth());
    }

  private:
    char letter;
};

/// Two windows one over the other, as on a screen with a dialog.
class PanelTest : public UiTest {
  protected:
    PanelTest() : lower(root(), 1, 1, 2, 4, 'a'), upper(root(), 1, 3, 2, 4, 'b') {}

    ScreenImage corner() { return shown(0, 0, 5, 10); }

    Tile lower;
    Tile upper;
};

TEST_F(PanelTest, the_window_created_last_stands_on_top) {
    EXPECT_PICTURE(corner(), R"(

 aabbbb
 aabbbb


)");
}

TEST_F(PanelTest, show_puts_a_window_on_top_again) {
    lower.show();
    EXPECT_PICTURE(corner(), R"(

 aaaabb
 aaaabb


)");
}

TEST_F(PanelTest, hide_takes_a_window_off_the_screen_without_destroying_it) {
    upper.hide();
    EXPECT_PICTURE(corner(), R"(

 aaaa
 aaaa


)");
    upper.show();
    EXPECT_PICTURE(corner(), R"(

 aabbbb
 aabbbb


)");
}

TEST_F(PanelTest, move_keeps_the_place_in_the_stack) {
    lower.move(2, 4);
    EXPECT_PICTURE(corner(), R"(

   bbbb
   bbbba
    aaaa

)");
}

TEST_F(PanelTest, move_stores_the_place) {
    lower.move(2, 4);
    EXPECT_EQ(lower.getRow(), 2);
    EXPECT_EQ(lower.getCol(), 4);
}

TEST_F(PanelTest, move_goes_by_where_the_parent_stands_now) {
    Tile widget(&lower, 1, 1, 1, 1, 'w');
    lower.move(2, 5);
    EXPECT_PICTURE(corner(), R"(

   bbbb
  wbbbbaa
     aaaa

)");
    widget.move(1, 1);
    EXPECT_PICTURE(corner(), R"(

   bbbb
   bbbbaa
     awaa

)");
}

TEST_F(PanelTest, a_destroyed_window_uncovers_what_was_under_it) {
    {
        const Tile third(root(), 2, 2, 2, 6, 'c');
        EXPECT_PICTURE(corner(), R"(

 aabbbb
 acccccc
  cccccc

)");
    }
    EXPECT_PICTURE(corner(), R"(

 aabbbb
 aabbbb


)");
}

TEST_F(PanelTest, a_released_window_leaves_the_screen) {
    upper.releaseCursesWindow();
    EXPECT_EQ(panels_shown(), 1);
    EXPECT_PICTURE(corner(), R"(

 aaaa
 aaaa


)");
}

// Reading a key refreshes the window that it is read from.
TEST_F(PanelTest, moving_a_hidden_window_and_reading_a_key_from_it_shows_nothing) {
    upper.hide();
    shown();
    upper.move(10, 30);
    terminal.type("a");
    drain_key(upper.getCursesWindow(), false);
    EXPECT_FALSE(terminal.image().shows("b"));
    EXPECT_FALSE(shown().shows("b"));
}

TEST_F(PanelTest, a_window_moved_while_hidden_appears_at_its_new_place) {
    upper.hide();
    shown();
    upper.move(2, 5);
    upper.show();
    EXPECT_PICTURE(corner(), R"(

 aaaa
 aaaabbbb
     bbbb

)");
}

TEST_F(PanelTest, moved_over_the_edge_of_the_terminal_shows_what_fits_in_its_place_of_the_stack) {
    lower.move(23, 78);
    upper.move(23, 79);
    lower.draw();
    upper.draw();
    EXPECT_EQ(shown().rowText(23).substr(70), "        ab");
    EXPECT_EQ(lower.getHeight(), 2);
    EXPECT_EQ(lower.getWidth(), 4);
    lower.move(1, 1);
    lower.draw();
    EXPECT_PICTURE(corner(), R"(

 aaaa
 aaaa


)");
}

TEST_F(PanelTest, moved_over_the_edge_keeps_how_it_reads_keys_and_writes_text) {
    keypad(upper.getCursesWindow(), TRUE);
    nodelay(upper.getCursesWindow(), TRUE);
    wattron(upper.getCursesWindow(), COLOR_PAIR(3) | A_BOLD);
    upper.move(22, 78);
    EXPECT_TRUE(is_keypad(upper.getCursesWindow()));
    EXPECT_TRUE(is_nodelay(upper.getCursesWindow()));
    mvwaddch(upper.getCursesWindow(), 0, 0, 'x');
    const Cell cell = shown().cell(22, 78);
    EXPECT_EQ(cell.background, COLOR_RED);
    EXPECT_TRUE(cell.bold);
}

// Curses cuts windows to a terminal that has become smaller.
TEST_F(PanelTest, move_takes_back_the_size_that_a_smaller_terminal_had_cost) {
    Tile wide(root(), 20, 60, 4, 20, 'w');
    resizeTo(20, 72);
    wide.move(1, 10);
    wide.draw();
    EXPECT_EQ(wide.getHeight(), 4);
    EXPECT_EQ(wide.getWidth(), 20);
    EXPECT_PICTURE(shown(0, 8, 6, 24), R"(

  wwwwwwwwwwwwwwwwwwww
  wwwwwwwwwwwwwwwwwwww
  wwwwwwwwwwwwwwwwwwww
  wwwwwwwwwwwwwwwwwwww

)");
}

TEST_F(PanelTest, moving_a_window_that_was_never_created_does_nothing_but_store) {
    Window window(root(), 1, 1, 2, 2);
    window.move(30, 90);
    EXPECT_EQ(window.getCursesWindow(), nullptr);
    EXPECT_EQ(window.getRow(), 30);
    EXPECT_EQ(panels_shown(), 2);
}

}  // namespace
