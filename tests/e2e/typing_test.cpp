// What is typed: no field takes anything of keys and bytes that are no text, and a character takes
// no more than a byte to the terminal: on a slow line each is to be seen.

#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/wizard_run.h"

namespace {

// Without the control characters by which a field is left or a character removed (TAB, Enter,
// backspace) and those that the terminal itself acts on (^C, ^Q, ^S, ^V, ^Z, ^\).
const std::string nonsense[] = {
    {"\x00\x01\x02\x04\x05\x06\x07\x0b\x0c\x0e\x0f\x10\x12\x14\x15\x17\x18\x19\x1d\x1e\x1f", 21},
    "\xc3\xa9\xc3\xbc\xc3\x9f",                                          // accented letters
    "\xd0\x96\xe6\x97\xa5\xe2\x82\xac",                                  // other scripts
    "\xf0\x9f\x98\x80\xf0\x9f\x91\xa9\xe2\x80\x8d\xf0\x9f\x92\xbb",      // wide, joined
    "\xff\xfe\x80\xbf\xc3\xe2\x82\xf0\x9f",                              // no UTF-8
    "\x1bOA\x1bOB\x1bOC\x1bOD",                                          // cursor keys
    "\x1b[1;2A\x1b[1;2B\x1b[1;2C\x1b[1;2D\x1b[1;5C\x1b[1;5D",            // with Shift and Ctrl
    "\x1b[2~\x1b[3~\x1bOH\x1bOF\x1b[5~\x1b[6~\x1b[Z",                    // editing keys
    "\x1bOP\x1bOQ\x1bOR\x1bOS\x1b[15~\x1b[17~\x1b[18~\x1b[23~\x1b[24~",  // function keys
    "\x1b[11~\x1b[28~\x1b[[A\x1b[[E\x1b[3;5~\x1b[27;5;9~\x1b[7$\x1b[23^\x1b[15@\x1bOE\x1bO5P\x1bOa"
    "\x1b[a\x1b[1;2Z",                                                    // of other terminals
    "\x1b[?1;2c\x1b[200~\x1b[<0;10;10M\x1b[2 q\x1b[24;80R\x1b[>0;276;0c"  // what no key sends
};

class Nonsense : public testing::TestWithParam<const char*> {
  protected:
    // Replaces the text of the field that has the focus, with nonsense between its halves.
    void expectTaken(const std::string& text, const std::string& shown) {
        for (const std::string& bytes : nonsense) {
            wizard.retype(text.substr(0, 2) + bytes + text.substr(2));
            wizard.waitForKey();
            EXPECT_TRUE(wizard.image().shows(shown)) << bytes << "\n" << wizard.image().text();
        }
        wizard.press(Key::tab);
    }

    WizardRun wizard{24, 80, "xterm-256color", GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Locales, Nonsense, testing::Values("C.UTF-8", "C"),
                         [](const auto& locale) { return locale.index == 0 ? "utf8" : "bytes"; });

TEST_P(Nonsense, reaches_no_field_of_any_kind) {
    wizard.waitForScreen(Stop::password);
    wizard.type("12");
    wizard.press(Key::escape);
    wizard.waitForKey();
    wizard.type("345");
    wizard.waitForKey();
    EXPECT_TRUE(wizard.image().shows("Password:***** "));
    expectTaken("12345", "Password:***** ");
    expectTaken("12345", "Validate:***** ");
    wizard.pressNext(Stop::password);
    wizard.waitForScreen(Stop::domain);
    expectTaken("example.com", "Primary Domain:example.com ");
    expectTaken("/srv/mail", "Domain Location:/srv/mail ");
    expectTaken("123", "Postmaster account password:*** ");
    wizard.pressNext(Stop::domain);
    wizard.pressNext(Stop::aliases);
    wizard.moveFocus(Stop::webadmin, 1);
    expectTaken("9876", "│$ all  : 0.0.0.0      9876 ");
    wizard.pressNext(Stop::webadmin);
    wizard.waitForScreen(Stop::smtp);
}

/// A run and a count of what it has written.
class Output : public testing::Test {
  protected:
    Output() { wizard.waitForScreen(Stop::password); }

    /// How many bytes the wizard has written since the last call, when it waits for a key.
    size_t news() {
        wizard.waitForKey();
        const size_t before = counted;
        counted = wizard.output().size();
        return counted - before;
    }

    /// The bytes for a text that is typed at once.
    size_t bytesFor(const std::string& text) {
        wizard.type(text);
        return news();
    }

    WizardRun wizard;
    size_t counted = 0;
};

TEST_F(Output, of_a_text_is_a_byte_for_each_character) {
    bytesFor("a");
    EXPECT_EQ(bytesFor("b"), 1U);
    EXPECT_EQ(bytesFor("cdefg"), 5U);
    wizard.walk(Stop::password, Stop::domain);
    bytesFor("a");
    EXPECT_EQ(bytesFor("b"), 1U);
}

TEST_F(Output, of_the_first_screen_is_no_more_than_that_of_a_plain_password_box) {
    const size_t first_screen = news();
    EXPECT_LE(first_screen, 1388U);
    wizard.press(Key::up);
    EXPECT_EQ(news(), 0U);
    wizard.resize(34, 100);
    EXPECT_LE(news(), first_screen + 100);
}

}  // namespace
