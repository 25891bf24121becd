#include "screens/sendmail_screen.h"

#include <curses.h>

#include "apply/apply_sequence.h"
#include "ui/format_label.h"
#include "ui/line_breaker.h"
#include "wizard/base/screen_moves.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

Screen sendmail_screen{state_sendmail};

namespace {

enum Focus { focus_yes, focus_no, focus_back };

constexpr int cols = 70;
constexpr int centring_rows = 15;
constexpr int first_row = 3;
constexpr int item_col = 3;
constexpr int item_width = cols - 4;

constexpr char heading[] = "Selecting 'Yes' in this screen will:";
constexpr char warning[] =
    "If you select 'No', command line appications (mailx, php, etc) will not be able to send "
    "emails via Teluma.";

struct Item {
    const char* text;
    int row;
};

// What "Yes" does; the rows are found out when the screen is built.
Item items[] = {
    {"set both set-user-ID and set-group-ID bits for the TELUMA's sendmail wrapper "
     "(/opt/teluma/bin/sendmail)",
     0},
    {"rename /usr/sbin/sendmail (if the file exists) to /usr/sbin/sendmail.beforeteluma", 0},
    {"link /usr/sbin/sendmail to /opt/teluma/bin/sendmail", 0},
};

void add_text(const char* text, int row, int col, int width) {
    screen_add(sendmail_screen, new FormatLabel(text, row, col, sendmail_screen.frame.get(), width,
                                                break_between_words));
}

void draw_bullets() {
    for (const Item& item : items)
        mvwprintw(sendmail_screen.frame->getCursesWindow(), item.row, 1, "* ");
}

// Gives the items their rows; returns the row behind the last.
int lay_out_items() {
    int row = first_row + 1;
    for (Item& item : items) {
        item.row = row;
        row += countLines(item.text, item_width, break_between_words);
    }
    return row;
}

void apply_with(int sendmail_wrapper) {
    screen_hide(sendmail_screen);
    screen_focus(state_sendmail) = focus_yes;
    wizard_settings.sendmail_wrapper = sendmail_wrapper;
    apply_configuration();
}

void say_yes() {
    apply_with(1);
}

void say_no() {
    apply_with(0);
}

void go_back() {
    screen_state = previous_screen_state(state_sendmail);
    screen_focus(state_sendmail) = focus_yes;
}

}  // namespace

void sendmail_screen_build() {
    constexpr int warning_width = cols - 2;
    const int warning_row = lay_out_items() + 1;
    const int button_row =
        warning_row + countLines(warning, warning_width, break_between_words) + 1;
    screen_open(sendmail_screen, button_row + 5, cols, centring_rows,
                "Sendmail Wrapper Configuration");
    sendmail_screen.draw_extra = draw_bullets;
    add_text(heading, first_row, 1, item_width);
    for (const Item& item : items)
        add_text(item.text, item.row, item_col, item_width);
    add_text(warning, warning_row, 1, warning_width);
    screen_add_button(sendmail_screen, focus_yes, button_row, cols - 10, "Yes", say_yes);
    screen_add_button(sendmail_screen, focus_no, button_row, (cols - 6) / 2, "No", say_no);
    screen_add_button(sendmail_screen, focus_back, button_row, 3, "Back", go_back);
    screen_hide(sendmail_screen);
}

void sendmail_screen_redraw() {
    screen_redraw(sendmail_screen);
}

void sendmail_screen_run() {
    screen_draw(sendmail_screen);
    screen_run(sendmail_screen);
    screen_hide(sendmail_screen);
}
