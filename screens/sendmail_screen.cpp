#include "apply/apply_sequence.h"
#include "screens/screen.h"
#include "screens/screen_table.h"
#include "ui/label.h"
#include "ui/line_breaker.h"
#include "wizard/base/wizard_settings.h"

namespace {

enum Focus { focus_yes, focus_no, focus_back };

constexpr int cols = 70;
constexpr int centring_rows = 15;
constexpr int item_row = 4;
constexpr int item_cols = cols - 4;
constexpr int warning_cols = cols - 2;

// What "Yes" does.
const char* const items[] = {
    ("set both set-user-ID and set-group-ID bits for the TELUMA's sendmail wrapper "
     "(/opt/teluma/bin/sendmail)"),
    "rename /usr/sbin/sendmail (if the file exists) to /usr/sbin/sendmail.beforeteluma",
    "link /usr/sbin/sendmail to /opt/teluma/bin/sendmail"};

constexpr char warning[] =
    "If you select 'No', command line appications (mailx, php, etc) will not be able to send "
    "emails via Teluma.";

int lines_of(const char* text, int width) { return countLines(text, width, break_between_words); }

int button_row() {
    int row = item_row;
    for (const char* item : items) row += lines_of(item, item_cols);
    return row + 1 + lines_of(warning, warning_cols) + 1;
}

class SendmailScreen : public Screen {
  public:
    explicit SendmailScreen(int state) : Screen(state, button_row() + 5, cols, centring_rows) {
        addText("Selecting 'Yes' in this screen will:", item_row - 1, 1, item_cols);
        int row = item_row;
        for (const char* item : items) {
            add<Label>(&frame, row, 1, "* ");
            row += addText(item, row, 3, item_cols);
        }
        addText(warning, row + 1, 1, warning_cols);
        addButton(focus_yes, button_row(), cols - 10, "Yes");
        addButton(focus_no, button_row(), (cols - 6) / 2, "No");
        addButton(focus_back, button_row(), 3, "Back");
    }

  private:
    // Returns how many lines it takes.
    int addText(const char* text, int row, int col, int width) {
        return add<FormatLabel>(text, row, col, &frame, width, break_between_words).getLineCount();
    }

    WizardEnd press(int button) override {
        if (button == focus_back) {
            leave(previous_screen_state(state), state);
            return WizardEnd::not_yet;
        }
        hide();
        screen_focus(state) = focus_yes;
        wizard_settings.sendmail_wrapper = button == focus_yes ? 1 : 0;
        return apply_configuration();
    }
};

}  // namespace

std::unique_ptr<Screen> sendmail_screen_build(int state) {
    return std::make_unique<SendmailScreen>(state);
}
