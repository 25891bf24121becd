// Keys and bytes that are no text: no field takes anything of them.

#include <gtest/gtest.h>

#include <map>

#include "tests/e2e/wizard_run.h"

namespace {

// Without those by which a field is left or a character removed (TAB, Enter, backspace) and those
// that the terminal itself acts on (^C, ^Q, ^S, ^V, ^Z, ^\). Escape is one of the keys.
const std::string control_bytes(
    "\x00\x01\x02\x04\x05\x06\x07\x0b\x0c\x0e\x0f\x10\x12\x14\x15\x17\x18\x19\x1d\x1e\x1f", 21);

const std::map<std::string, std::string> nonsense = {
    {"control_bytes", control_bytes},
    {"accented_letters", "\xc3\xa9\xc3\xbc\xc3\x9f"},
    {"other_scripts", "\xd0\x96\xe6\x97\xa5\xe2\x82\xac"},
    {"wide_and_joined_characters", "\xf0\x9f\x98\x80\xf0\x9f\x91\xa9\xe2\x80\x8d\xf0\x9f\x92\xbb"},
    {"bytes_that_are_no_utf8", "\xff\xfe\x80\xbf\xc3\xe2\x82\xf0\x9f"},
    {"cursor_keys", "\x1bOA\x1bOB\x1bOC\x1bOD"},
    {"cursor_keys_with_shift_and_ctrl", "\x1b[1;2A\x1b[1;2B\x1b[1;2C\x1b[1;2D\x1b[1;5C\x1b[1;5D"},
    {"editing_keys", "\x1b[2~\x1b[3~\x1bOH\x1bOF\x1b[5~\x1b[6~\x1b[Z"},
    {"function_keys",
     "\x1bOP\x1bOQ\x1bOR\x1bOS\x1b[15~\x1b[17~\x1b[18~\x1b[19~\x1b[20~\x1b[21~\x1b[23~\x1b[24~"},
    {"keys_of_other_terminals",
     "\x1b[11~\x1b[28~\x1b[[A\x1b[[E\x1b[3;5~\x1b[5;5~\x1b[27;5;9~\x1b[7$\x1b[23^\x1b[15@\x1bOE"
     "\x1bO5P\x1bOa\x1b[a\x1b[1;2Z"},
    {"what_no_key_sends", "\x1b[?1;2c\x1b[200~\x1b[<0;10;10M\x1b[2 q\x1b[24;80R\x1b[>0;276;0c"},
};

struct Surroundings {
    std::string kind;  // of nonsense
    const char* locale;
};

std::vector<Surroundings> all_surroundings() {
    std::vector<Surroundings> all;
    for (const auto& entry : nonsense) {
        all.push_back({entry.first, "C.UTF-8"});
        all.push_back({entry.first, "C"});
    }
    return all;
}

std::string name_of(const testing::TestParamInfo<Surroundings>& info) {
    const bool has_utf8 = std::string(info.param.locale) == "C.UTF-8";
    return info.param.kind + (has_utf8 ? "_with_utf8" : "_without");
}

class Nonsense : public testing::TestWithParam<Surroundings> {
  protected:
    // Replaces the text of the field that has the focus.
    void typeAround(int most, const std::string& before, const std::string& after) {
        wizard.retype(most, before + nonsense.at(GetParam().kind) + after);
        wizard.press(Key::tab);
        wizard.waitForKey();
    }

    void expectShown(const std::string& text) {
        EXPECT_TRUE(wizard.image().shows(text)) << text << " in\n" << wizard.image().text();
    }

    WizardRun wizard{24, 80, "xterm-256color", GetParam().locale};
};

INSTANTIATE_TEST_SUITE_P(Kinds, Nonsense, testing::ValuesIn(all_surroundings()), name_of);

TEST_P(Nonsense, reaches_no_field_of_any_kind) {
    wizard.waitForScreen(Stop::password);
    typeAround(50, "12", "345");
    expectShown("Password:***** ");
    typeAround(50, "", "12345");
    expectShown("Validate:***** ");
    wizard.pressNext(Stop::password);

    wizard.waitForScreen(Stop::domain);
    typeAround(50, "exa", "mple.com");
    expectShown("Primary Domain:example.com ");
    typeAround(252, "/srv/", "mail");
    expectShown("Domain Location:/srv/mail ");
    typeAround(50, "12", "3");
    expectShown("Postmaster account password:*** ");
    wizard.pressNext(Stop::domain);

    wizard.pressNext(Stop::aliases);
    wizard.moveFocus(Stop::webadmin, 1);
    typeAround(5, "98", "76");
    expectShown("│$ all  : 0.0.0.0      9876 ");
    wizard.pressNext(Stop::webadmin);
    wizard.waitForScreen(Stop::smtp);
}

TEST(EscapeKey, reaches_no_field) {
    WizardRun wizard;
    wizard.waitForScreen(Stop::password);
    wizard.type("12");
    wizard.press(Key::escape);
    wizard.waitForKey();
    wizard.type("345");
    wizard.waitForKey();
    EXPECT_TRUE(wizard.image().shows("Password:***** "));
}

}  // namespace
