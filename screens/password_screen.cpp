#include "screens/password_screen.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "ui/label.h"
#include "ui/pass_text_field.h"
#include "wizard/base/screen_moves.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/ending.h"
#include "wizard/system/secret.h"

Screen password_screen{state_password};

namespace {

enum Focus { focus_password, focus_validate, focus_next, focus_exit };

constexpr int rows = 13;
constexpr int cols = 45;
constexpr int max_password = 50;

PassTextField* password_field;
PassTextField* validate_field;

PassTextField* add_password_row(int focus, int row, const char* text) {
    constexpr int margin = 2;
    constexpr int room = 39;
    const int label_length = static_cast<int>(std::strlen(text));
    Window* frame = password_screen.frame.get();
    auto* label = screen_add(password_screen, new Label(frame, row, margin, text));
    auto* field = screen_add(
        password_screen,
        new PassTextField(frame, row, margin + label_length, max_password, room - label_length, 1));
    add_field_control(password_screen, focus, label, field);
    return field;
}

void go_next() {
    const SecretText password(password_field->getText());
    const SecretText validate(validate_field->getText());
    if (std::strcmp(password.get(), validate.get()) != 0) {
        screen_error(password_screen, "Passwords do not match!", focus_password);
        return;
    }
    std::snprintf(wizard_settings.admin_password, sizeof(wizard_settings.admin_password), "%s",
                  password.get());
    if (password.get()[0] == '\0') {
        screen_error(password_screen, "A blank password is not allowed!", focus_password);
        return;
    }
    screen_leave(next_screen_state(state_password));
}

}  // namespace

void password_screen_create() {
    screen_open(password_screen, rows, cols, rows, "Please enter admin's password");
    password_field = add_password_row(focus_password, 3, "Password:");
    validate_field = add_password_row(focus_validate, 5, "Validate:");
    screen_add_button(password_screen, focus_next, 8, cols - 11, "Next", go_next);
    screen_add_button(password_screen, focus_exit, 8, 2, "Exit",
                      [] { std::exit(end_wizard(WizardEnd::left)); });
    screen_hide(password_screen);
}

void password_screen_entry() {
    screen_draw(password_screen);
    screen_run(password_screen);
    screen_hide(password_screen);
}
