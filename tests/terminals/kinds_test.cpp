// Kinds of terminals and character sets: what the terminal shows, what its keys send, how it is
// left.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "tests/e2e/wizard_run.h"
#include "tests/support/golden.h"
#include "tests/support/process.h"

namespace {

/// What TERM and LC_ALL say.
using Kind = std::tuple<std::string, std::string>;

class KindOfTerminal : public testing::TestWithParam<Kind> {
  protected:
    // What the key sends by the terminal's entry in terminfo.
    std::string key(const std::string& capability) const {
        return run_command({"tput", "-T", term, capability}, {{"PATH", "/usr/bin:/bin"}}).out;
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

    const std::string term = std::get<0>(GetParam());
    const std::string locale = std::get<1>(GetParam());
    WizardRun wizard{24, 80, term, locale};
};

INSTANTIATE_TEST_SUITE_P(Terminals, KindOfTerminal,
                         testing::Combine(testing::Values("xterm-256color", "xterm", "linux",
                                                          "screen-256color", "tmux-256color",
                                                          "vt220", "putty", "rxvt"),
                                          testing::Values("C.UTF-8", "C")),
                         [](const auto& kind) {
                             std::string name = std::get<0>(kind.param);
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name + (std::get<1>(kind.param) == "C" ? "" : "_with_utf8");
                         });

TEST_P(KindOfTerminal, has_frames_of_lines_and_keys_in_all_their_forms) {
    EXPECT_SCREEN(wizard, term != "vt220" ? "../screens/golden/password_on_password"
                                          : "golden/without_colours/password");
    // Many terminals, when they take UTF-8, show the letters that stand for lines as letters,
    // whatever character set is chosen.
    if (locale != "C") {
        EXPECT_NE(wizard.output().find("┌─"), std::string::npos);
        EXPECT_EQ(wizard.output().find("lqq"), std::string::npos);
        EXPECT_EQ(wizard.output().find('\016'), std::string::npos);
    }
    expectPassword("sixsix", "******");
    expectPassword("\b", "*****");
    expectPassword("\x7f", "****");
    expectPassword(key("kbs"), "***");
    wizard.type("\tsix\r\n");
    wizard.waitForScreen(Stop::domain);
    wizard.type("\t\tsecret\t ");
    wizard.waitForScreen(Stop::aliases);
    expectTicks(key("kcud1"), {true, false, true});
    expectTicks("\033[B", {true, false, false});
    expectTicks(key("kcuu1"), {true, true, false});
    expectTicks("\033OA", {false, true, false});
    expectTicks("\033OB", {false, false, false});
    expectTicks("\033[A", {true, false, false});
    wizard.type("\t\033OM");
    wizard.waitForScreen(Stop::webadmin);
    wizard.type("\t\b\b\b\b\033Ox\033Op\033Ox\033Op");
    wizard.waitForText("8080");
    wizard.press(Key::ctrl_c);
    EXPECT_EQ(wizard.waitExit(), exited(1));
    EXPECT_EQ(wizard.modes(), wizard.modesBefore());
    EXPECT_TRUE(wizard.image().cursor().visible);
    wizard.waitForText("TELUMA Configuration Wizard Aborted!");
}

// Nothing but bold and the cursor tells where the focus is.
TEST(FocusWithoutColours, is_seen_by_the_cursor_or_in_bold) {
    WizardRun wizard(24, 80, "vt220");
    wizard.moveFocus(Stop::password, 0);
    wizard.pressTimes(Key::tab, 2);
    EXPECT_SCREEN(wizard, "golden/without_colours/password_on_next");
    wizard.press(Key::tab);
    EXPECT_SCREEN(wizard, "golden/without_colours/password_on_exit");
}

}  // namespace
