#include <utility>

#include "apply/apply_sequence.h"
#include "screens/screen.h"
#include "screens/screen_table.h"
#include "ui/line_breaker.h"
#include "wizard/base/wizard_settings.h"

namespace {

enum Focus { focus_yes, focus_no, focus_back };

constexpr int cols = 70;
constexpr int centring_rows = 15;
constexpr int button_row = 13;

// What "Yes" does, and on which rows that stands.
constexpr std::pair<int, const char*> items[] = {
    {4,
     "set both set-user-ID and set-group-ID bits for the TELUMA's sendmail wrapper "
     "(/opt/teluma/bin/sendmail)"},
    {6, "rename /usr/sbin/sendmail (if the file exists) to /usr/sbin/sendmail.beforeteluma"},
    {8, "link /usr/sbin/sendmail to /opt/teluma/bin/sendmail"}};

class SendmailScreen : public Screen {
  public:
    explicit SendmailScreen(int state) : Screen(state, button_row + 5, cols, centring_rows) {
        addText(3, 1, cols - 4, "Selecting 'Yes' in this screen will:");
        for (const auto& [row, text] : items) {
            add<Label>(&frame, row, 1, "* ");
            addText(row, 3, cols - 4, text);
        }
        addText(
            10, 1, cols - 2,
            "If you select 'No', command line appications (mailx, php, etc) will not be able to "
            "send emails via Teluma.");
        addButton(focus_yes, button_row, cols - 10, "Yes");
        addButton(focus_no, button_row, (cols - 6) / 2, "No");
        addButton(focus_back, button_row, 3, "Back");
    }

  private:
    void addText(int row, int col, int width, const char* text) {
        add<FormatLabel>(text, row, col, &frame, width, break_between_words);
    }

    WizardEnd press(int button) override {
        if (button == focus_back) return goBack();
        hide();
        wizard_settings.sendmail_wrapper = button == focus_yes ? 1 : 0;
        return apply_configuration();
    }
};

}  // namespace

std::unique_ptr<Screen> sendmail_screen_build(int state) {
    return std::make_unique<SendmailScreen>(state);
}
