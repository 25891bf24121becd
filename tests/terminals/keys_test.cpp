// Kinds of terminals: what their keys send.

#include <gtest/gtest.h>

#include "tests/e2e/wizard_run.h"
#include "tests/support/process.h"
#include "tests/terminals/surroundings.h"

namespace {

class Keys : public testing::TestWithParam<Surroundings> {
  protected:
    static std::string key(const std::string& capability) {
        return run_command({"tput", "-T", GetParam().term, capability}).out;
    }

    // Types a key and expects how many characters of the password are left.
    void expectPassword(const std::string& key_bytes, const std::string& stars) {
        wizard.type(key_bytes);
        wizard.waitForText("Password:" + stars + " ");
    }

    // Types a key and a space and expects the check marks that this leaves.
    void expectTicks(const std::string& key_bytes, const std::vector<bool>& ticks) {
        wizard.type(key_bytes + " ");
        wizard.waitForKey();
        EXPECT_EQ(wizard.ticks(), ticks);
    }

    void eraseInEveryWay() {
        wizard.waitForScreen(Stop::password);
        expectPassword("sixsix", "******");
        expectPassword("\b", "*****");
        expectPassword("\x7f", "****");
        expectPassword(key("kbs"), "***");
    }

    void moveTheBarInBothModes() {
        wizard.waitForScreen(Stop::aliases);
        expectTicks(key("kcud1"), {true, false, true});
        expectTicks("\033[B", {true, false, false});
        expectTicks(key("kcuu1"), {true, true, false});
        expectTicks("\033OA", {false, true, false});
        expectTicks("\033OB", {false, false, false});
        expectTicks("\033[A", {true, false, false});
    }

    WizardRun wizard{24, 80, GetParam().term, GetParam().locale};
};

INSTANTIATE_TEST_SUITE_P(Terminals, Keys, testing::ValuesIn(every_surroundings()),
                         surroundings_name);

TEST_P(Keys, lead_through_the_screens_in_all_their_forms) {
    eraseInEveryWay();
    wizard.type("\tsix\r\n");
    wizard.waitForScreen(Stop::domain);
    wizard.type("\t\tsecret\t ");
    moveTheBarInBothModes();
    wizard.type("\t\033OM");
    wizard.waitForScreen(Stop::webadmin);
    wizard.type("\t\b\b\b\b\033Ox\033Op\033Ox\033Op");
    wizard.waitForText("8080");
}

}  // namespace
