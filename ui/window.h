#pragma once

#include <curses.h>
#include <panel.h>

#include <string>

/// The base of the toolkit: one curses window and one panel. Every widget is a Window, and a screen
/// or a dialog is one used as a frame; newer ones stand on top. A Window reads no keys; the key
/// loop of its screen or dialog does. Texts are copied. What does not fit is not drawn.
///
/// Use: construct, set title, box and colours, create() (widgets do so in their constructor),
/// draw(), then update_panels() and doupdate().
class Window {
  public:
    /// A window at (row, col) of `parent`, which it doesn't own and which must outlive it. Nothing
    /// is on the screen before create().
    Window(Window* parent, int row, int col, int height, int width);

    /// Wraps a curses window that somebody else owns, such as the standard screen, without a panel.
    /// Place and size are the curses window's, all -1 for a null handle.
    Window(WINDOW* window, Window* parent);

    virtual void draw();

    /// Marks the whole window as changed, and its ancestors likewise.
    virtual void touch();

    virtual ~Window();

    /// Takes a key of wgetch(3X), shows what it has changed and returns it.
    virtual int onKey(int key) { return key; }

    /// Takes the look of a widget that has the keyboard or has not, which the next draw() shows.
    virtual void setFocused(bool /*focused*/) {}

    /// Puts the curses window's cursor where it stands while the widget has the keyboard.
    virtual void placeCursor() {}

    /// True for a widget in which the terminal's cursor is to be seen while it has the keyboard.
    virtual bool showsCursor() const { return false; }

    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// Makes the curses window and, on top of the stack, its panel. A height or width of 0 reaches
    /// to the edge of the terminal, as newwin(3X) has it.
    void create();

    WINDOW* getCursesWindow() const { return cursesWindow; }
    int getRow() const { return row; }
    int getCol() const { return col; }

    /// The size of the curses window, -1 while there is none.
    int getHeight() const { return getmaxy(cursesWindow); }
    int getWidth() const { return getmaxx(cursesWindow); }

    /// Gives the window a frame with `text` in it, in colour pair `pair`.
    void setTitle(const char* text, int pair);
    void setBoxed() { boxed = 1; }

    /// `back` and `fore` are colour pairs, of the background and of text; `bold_text` is 0 or 1.
    void setColors(int back, int fore, int bold_text);

    /// Only store, for create() and move().
    void setSize(int new_height, int new_width) {
        height = new_height;
        width = new_width;
    }
    void setPosition(int new_row, int new_col) {
        row = new_row;
        col = new_col;
    }

    /// Moves the window to (row, col) of its parent, in its own size, which curses may have cut
    /// when the terminal was resized; the panel keeps its place in the stack. Beyond the edge of
    /// the terminal nothing shows. What was in the window may be lost: draw() it.
    void move(int new_row, int new_col);

    /// Moves the window after a parent that has moved.
    virtual void follow() { move(row, col); }

    void show() { show_panel(panel); }  ///< puts the panel on top of the stack
    void hide() { hide_panel(panel); }  ///< takes the panel off the stack
    void refresh() { wrefresh(cursesWindow); }

    /// Deletes the panel and the curses window.
    void releaseCursesWindow();

    /// What is left inside the frame or box.
    int clientWidth() const { return boxed || hasTitle ? width - 2 : width; }
    int clientHeight() const { return boxed ? height - 2 : hasTitle ? height - 4 : height; }

  protected:
    /// For widgets that find out their geometry themselves.
    Window() = default;

    /// Prints `text` in the middle of `columns` columns (0 for 80) from `first_col` on, which it
    /// clears but for the outermost; on the cursor's line if `line` is 0.
    void printCentered(int line, int first_col, int columns, const char* text, attr_t attributes);

    WINDOW* cursesWindow = nullptr;
    Window* parent = nullptr;
    PANEL* panel = nullptr;
    int row = 0;
    int col = 0;
    int height = 0;
    int width = 0;
    int hasTitle = 0;
    std::string title;
    int titlePair = 0;
    int boxed = 0;
    int backPair = 0;
    int forePair = 0;
    int bold = 0;

  private:
    WINDOW* parentWindow() const { return parent != nullptr ? parent->cursesWindow : nullptr; }
    int screenRow() const { return getbegy(parentWindow()) + row; }
    int screenCol() const { return getbegx(parentWindow()) + col; }
    WINDOW* newCursesWindow() const { return newwin(height, width, screenRow(), screenCol()); }
    void drawTitleFrame();
    void replaceCursesWindow();
};
