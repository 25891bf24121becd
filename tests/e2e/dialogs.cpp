#include "tests/e2e/dialogs.h"

namespace {

constexpr int webadmin_port = 9000;
constexpr int loopback_row = 1;

const struct {
    const char* name;
    const char* title;
    int buttons;
} facts[] = {{"message", "Error!", 1},
             {"question", "WARNING!", 2},
             {"retry_back", "Warning!", 2},
             {"pending", "Operation pending!", 0}};

const auto& facts_of(Dialog dialog) { return facts[static_cast<int>(dialog)]; }

}  // namespace

DialogStage::DialogStage(Dialog dialog) : kind(dialog) {
    if (kind == Dialog::retry_back) taken.emplace(webadmin_port).open();
    if (kind == Dialog::pending) silent.emplace(webadmin_port);
}

void DialogStage::open(WizardRun& wizard, const Caller& caller) {
    if (kind == Dialog::message) {
        wizard.waitForScreen(Stop::password, caller);
        wizard.type("not repeated");
        wizard.pressNext(Stop::password, caller);
    } else {
        wizard.walk(Stop::password, Stop::webadmin);
        wizard.answerListener(Stop::webadmin, {kind == Dialog::question ? loopback_row : 0});
    }
    wizard.waitForDialog(facts_of(kind).title, caller);
}

int DialogStage::buttons() const { return facts_of(kind).buttons; }

void DialogStage::leave(WizardRun& wizard) {
    if (kind == Dialog::pending) {
        silent->free();
        return wizard.waitForScreen(Stop::smtp);
    }
    if (kind == Dialog::retry_back) wizard.press(Key::tab);
    wizard.press(Key::enter);
    wizard.waitForScreen(kind == Dialog::message ? Stop::password : Stop::webadmin);
}

std::string dialog_name(const testing::TestParamInfo<Dialog>& info) {
    return facts_of(info.param).name;
}
