#include "tests/screens/apply_double.h"

#include <panel.h>

#include "apply/apply_sequence.h"
#include "screens/sendmail_screen.h"
#include "wizard/base/wizard_settings.h"

ApplyDouble apply_double;

namespace {

bool is_on_panel_stack(WINDOW* window) {
    for (PANEL* panel = panel_above(nullptr); panel != nullptr; panel = panel_above(panel)) {
        if (panel_window(panel) == window)
            return true;
    }
    return false;
}

}  // namespace

WizardEnd apply_configuration() {
    ++apply_double.calls;
    apply_double.sendmail_wrapper = wizard_settings.sendmail_wrapper;
    apply_double.state = screen_state;
    apply_double.focus = screen_focus(state_sendmail);
    apply_double.screen_is_gone = !is_on_panel_stack(sendmail_screen.frame->getCursesWindow());
    screen_state = apply_double.leads_to;
    return screen_state == state_end ? WizardEnd::completed : WizardEnd::not_yet;
}
