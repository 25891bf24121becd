#include "ui/window.h"

#include "tests/ui/ui_test.h"
#include "ui/keys.h"

namespace {

using WindowTest = UiTest;

Position corner_of(const Window& window) {
    return {getbegy(window.getCursesWindow()), getbegx(window.getCursesWindow())};
}

Position inside_of(const Window& window) { return {window.clientHeight(), window.clientWidth()}; }

TEST_F(WindowTest, nothing_but_its_geometry_exists_before_create) {
    Window window(root(), 3, 5, 7, 20);
    EXPECT_EQ(window.getCursesWindow(), nullptr);
    EXPECT_EQ(size_of(window), (Position{-1, -1}));
    EXPECT_EQ(place_of(window), (Position{3, 5}));
    EXPECT_EQ(inside_of(window), (Position{7, 20}));
    window.move(30, 90);
    EXPECT_EQ(window.getCursesWindow(), nullptr);
    EXPECT_EQ(place_of(window), (Position{30, 90}));
    EXPECT_EQ(panels_shown(), 0);
}

TEST_F(WindowTest, create_makes_a_curses_window_of_its_size_at_its_place_of_the_parent) {
    Window frame(root(), 3, 5, 7, 20);
    frame.create();
    EXPECT_EQ(size_of(frame), (Position{7, 20}));
    EXPECT_EQ(corner_of(frame), (Position{3, 5}));
    Window widget(&frame, 2, 4, 1, 6);
    widget.create();
    EXPECT_EQ(corner_of(widget), (Position{5, 9}));
    frame.releaseCursesWindow();
    for (Window* parent : {&frame, static_cast<Window*>(nullptr)}) {
        Window lost(parent, 2, 4, 1, 6);
        lost.create();
        EXPECT_EQ(corner_of(lost), (Position{1, 3}));
    }
}

TEST_F(WindowTest, a_wrapped_window_has_that_windows_geometry_no_panel_and_outlives_it) {
    WINDOW* wrapped = newwin(4, 9, 2, 6);
    {
        const Window window(wrapped, nullptr);
        EXPECT_EQ(place_of(window), (Position{2, 6}));
        EXPECT_EQ(size_of(window), (Position{4, 9}));
        EXPECT_EQ(inside_of(window), (Position{4, 9}));
        EXPECT_EQ(panels_shown(), 0);
    }
    mvwaddstr(wrapped, 0, 0, "still here");
    wrefresh(wrapped);
    EXPECT_TRUE(terminal.image().shows("still her"));
    delwin(wrapped);
}

TEST_F(WindowTest, a_wrapped_null_handle_gives_minus_one_everywhere) {
    const Window window(nullptr, nullptr);
    for (const Position& pair : {place_of(window), size_of(window), inside_of(window)})
        EXPECT_EQ(pair, (Position{-1, -1}));
}

TEST_F(WindowTest, set_size_and_set_position_only_store_for_create) {
    Window window(root(), 3, 5, 7, 20);
    window.create();
    window.setSize(4, 9);
    window.setPosition(2, 6);
    EXPECT_EQ(size_of(window), (Position{7, 20}));
    EXPECT_EQ(corner_of(window), (Position{3, 5}));
    EXPECT_EQ(inside_of(window), (Position{4, 9}));
    EXPECT_EQ(place_of(window), (Position{2, 6}));
    window.releaseCursesWindow();
    EXPECT_EQ(size_of(window), (Position{-1, -1}));
    window.create();
    EXPECT_EQ(size_of(window), (Position{4, 9}));
    EXPECT_EQ(corner_of(window), (Position{2, 6}));
}

TEST_F(WindowTest, a_title_leaves_four_lines_less_inside_a_box_two_and_both_as_much_as_a_box) {
    Window titled(root(), 0, 0, 10, 30);
    titled.setTitle("Title", 2);
    EXPECT_EQ(inside_of(titled), (Position{6, 28}));
    titled.setBoxed();
    EXPECT_EQ(inside_of(titled), (Position{8, 28}));
    Window boxed(root(), 0, 0, 10, 30);
    boxed.setBoxed();
    EXPECT_EQ(inside_of(boxed), (Position{8, 28}));
}

TEST_F(WindowTest, touch_marks_every_line_of_it_and_of_its_ancestors) {
    Window frame(root(), 3, 5, 7, 20);
    frame.create();
    Window widget(&frame, 2, 4, 2, 6);
    widget.create();
    shown();
    const Window* const chain[] = {&widget, &frame, root()};
    for (const Window* window : chain) ASSERT_FALSE(is_wintouched(window->getCursesWindow()));
    widget.touch();
    for (const Window* window : chain) {
        for (int line = 0; line < window->getHeight(); ++line)
            EXPECT_TRUE(is_linetouched(window->getCursesWindow(), line)) << line;
    }
}

/// A window full of one letter.
class Tile : public Window {
  public:
    Tile(Window* parent, int row, int col, int height, int width, char tile_letter)
        : Window(parent, row, col, height, width), letter(tile_letter) {
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

    ScreenImage corner() { return shown().region(1, 1, 4, 10); }

    Tile lower;
    Tile upper;
};

TEST_F(PanelTest, the_window_created_last_stands_on_top_until_another_is_shown_or_it_hides) {
    EXPECT_PICTURE(corner(), "aabbbb\naabbbb\n\n\n");
    lower.show();
    EXPECT_PICTURE(corner(), "aaaabb\naaaabb\n\n\n");
    lower.hide();
    EXPECT_PICTURE(corner(), "  bbbb\n  bbbb\n\n\n");
    lower.show();
    EXPECT_PICTURE(corner(), "aaaabb\naaaabb\n\n\n");
}

TEST_F(PanelTest, refresh_shows_the_window_and_nothing_else) {
    upper.refresh();
    EXPECT_PICTURE(terminal.image().region(1, 1, 4, 10), "  bbbb\n  bbbb\n\n\n");
}

TEST_F(PanelTest, move_stores_the_place_and_keeps_contents_and_place_in_the_stack) {
    lower.move(2, 4);
    EXPECT_EQ(place_of(lower), (Position{2, 4}));
    EXPECT_PICTURE(corner(), "  bbbb\n  bbbba\n   aaaa\n\n");
}

TEST_F(PanelTest, a_widget_follows_its_parent_when_it_is_told_to) {
    Tile widget(&lower, 1, 1, 1, 1, 'w');
    lower.move(2, 5);
    EXPECT_PICTURE(corner(), "  bbbb\n wbbbbaa\n    aaaa\n\n");
    widget.follow();
    EXPECT_PICTURE(corner(), "  bbbb\n  bbbbaa\n    awaa\n\n");
}

TEST_F(PanelTest, a_destroyed_or_released_window_uncovers_what_was_under_it) {
    { const Tile third(root(), 2, 2, 2, 6, 'c'); }
    EXPECT_EQ(panels_shown(), 2);
    EXPECT_PICTURE(corner(), "aabbbb\naabbbb\n\n\n");
    upper.releaseCursesWindow();
    EXPECT_EQ(panels_shown(), 1);
    EXPECT_PICTURE(corner(), "aaaa\naaaa\n\n\n");
}

// Reading a key refreshes the window that it is read from.
TEST_F(PanelTest, a_window_moved_while_hidden_shows_nothing_though_a_key_is_read_from_it) {
    upper.hide();
    shown();
    upper.move(2, 5);
    terminal.type("a");
    drain_key(upper.getCursesWindow(), false);
    EXPECT_FALSE(terminal.image().shows("b"));
    EXPECT_FALSE(shown().shows("b"));
}

TEST_F(PanelTest, a_window_moved_while_hidden_appears_at_its_new_place) {
    upper.hide();
    upper.move(2, 5);
    upper.show();
    EXPECT_PICTURE(corner(), "aaaa\naaaabbbb\n    bbbb\n\n");
}

TEST_F(PanelTest, moved_over_the_edge_of_the_terminal_shows_what_fits_and_is_otherwise_the_same) {
    keypad(lower.getCursesWindow(), TRUE);
    nodelay(lower.getCursesWindow(), TRUE);
    wattron(lower.getCursesWindow(), COLOR_PAIR(3) | A_BOLD);
    lower.move(23, 78);
    upper.move(23, 79);
    lower.draw();
    upper.draw();
    EXPECT_EQ(shown().rowText(23).substr(70), "        ab");
    EXPECT_EQ(size_of(lower), (Position{2, 4}));
    EXPECT_TRUE(is_keypad(lower.getCursesWindow()));
    EXPECT_TRUE(is_nodelay(lower.getCursesWindow()));
    mvwaddch(lower.getCursesWindow(), 0, 0, 'x');
    EXPECT_COLOURS(shown().region(23, 78, 1, 1), "R");
    lower.move(1, 1);
    lower.draw();
    EXPECT_PICTURE(corner(), "aaaa\naaaa\n\n\n");
}

// Curses cuts windows to a terminal that has become smaller.
TEST_F(PanelTest, move_takes_back_the_height_or_width_that_a_smaller_terminal_had_cost) {
    Tile wide(root(), 1, 60, 2, 20, 'w');
    Tile high(root(), 20, 1, 4, 2, 'h');
    resizeTo(22, 72);
    for (Tile* tile : {&wide, &high}) {
        tile->move(1, 10);
        tile->draw();
    }
    EXPECT_EQ(size_of(wide), (Position{2, 20}));
    EXPECT_EQ(size_of(high), (Position{4, 2}));
    EXPECT_PICTURE(shown().region(1, 8, 5, 24),
                   "  hhwwwwwwwwwwwwwwwwww\n  hhwwwwwwwwwwwwwwwwww\n  hh\n  hh\n\n");
}

}  // namespace
