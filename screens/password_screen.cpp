#include <cstdio>
#include <cstring>

#include "screens/screen.h"
#include "screens/screen_table.h"
#include "ui/text_field.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/system/secret.h"

namespace {

enum Focus { focus_password, focus_validate, focus_next, focus_exit };

constexpr int rows = 13;
constexpr int cols = 45;
constexpr int max_password = 50;

class PasswordScreen : public Screen {
  public:
    explicit PasswordScreen(int state) : Screen(state, rows, cols, rows) {
        addButton(focus_next, 8, cols - 11, "Next");
        addButton(focus_exit, 8, 2, "Exit");
    }

  private:
    WizardEnd press(int button) override {
        if (button == focus_exit) return WizardEnd::left;
        const SecretText typed(password.getText());
        const SecretText again(validate.getText());
        if (std::strcmp(typed.get(), again.get()) != 0)
            return refuse("Passwords do not match!", focus_password);
        std::snprintf(wizard_settings.admin_password, sizeof(wizard_settings.admin_password), "%s",
                      typed.get());
        if (typed.get()[0] == '\0')
            return refuse("A blank password is not allowed!", focus_password);
        return goOn();
    }

    PassTextField& password = addField<PassTextField>(focus_password, 3, "Password:", max_password);
    PassTextField& validate = addField<PassTextField>(focus_validate, 5, "Validate:", max_password);
};

}  // namespace

std::unique_ptr<Screen> password_screen_build(int state) {
    return std::make_unique<PasswordScreen>(state);
}
