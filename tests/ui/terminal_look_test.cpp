#include "ui/terminal/terminal_look.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TerminalLook look_after(const std::string& parameters) {
    TerminalLook look = unknown_terminal_look();
    take_rendition(look, parameters);
    return look;
}

std::string change(const std::string& from, const std::string& to) {
    return look_change(look_after(from), look_after(to));
}

TEST(TerminalLook, holds_what_was_asked_for_last) {
    const TerminalLook look = look_after("0;1;31;37;41;44;11");
    EXPECT_EQ(look, (TerminalLook{"1", "37", "44", "11"}));
}

TEST(TerminalLook, holds_eight_colours_and_the_terminals_own) {
    for (const char* colour : {"0", "1", "2", "3", "4", "5", "6", "7"}) {
        const std::string foreground = std::string("3") + colour;
        const std::string background = std::string("4") + colour;
        EXPECT_EQ(look_after("0;" + foreground + ";" + background),
                  (TerminalLook{"", foreground, background}));
    }
    EXPECT_EQ(look_after("0;31;39;41;49"), TerminalLook{});
}

TEST(TerminalLook, takes_all_for_others_behind_what_it_does_not_know) {
    for (const std::string parameter : {"2", "7", "22", "29", "50", "90", "100", "999999999999"})
        EXPECT_EQ(look_after("0;1;" + parameter + ";37;44"),
                  (TerminalLook{"1", "", "", "", ";" + parameter + ";37;44"}));
}

TEST(TerminalLook, does_not_take_the_numbers_of_extended_colours_for_others) {
    for (const std::string colour : {"38;5;0", "48;2;0;1;30", "58;5;11"})
        EXPECT_EQ(look_after("0;" + colour), (TerminalLook{"", "", "", "", ";" + colour}));
}

TEST(TerminalLook, keeps_its_font_when_the_rest_is_taken_back) {
    EXPECT_EQ(look_after("1;37;44;4;11;0"), (TerminalLook{"", "", "", "11"}));
    EXPECT_EQ(look_after("4;10;"), (TerminalLook{"", "", "", "10"}));
}

TEST(LookChange, is_nothing_between_the_same) {
    EXPECT_EQ(change("0;1;37;44", "0;44;37;1"), "");
    EXPECT_EQ(change("4", "4"), "");
}

TEST(LookChange, adds_what_is_new) {
    EXPECT_EQ(change("0", "0;1"), "\x1b[1m");
    EXPECT_EQ(change("0;1", "0;1;37;44"), "\x1b[37;44m");
    EXPECT_EQ(change("0;1;37;44", "0;1;30;41"), "\x1b[30;41m");
    EXPECT_EQ(change("0;1", "0;1;4;38;5;9"), "\x1b[4;38;5;9m");
    EXPECT_EQ(change("1;4", "1;4;7"), "\x1b[7m");
}

TEST(LookChange, takes_all_back_for_what_is_gone) {
    EXPECT_EQ(change("0;1", "0"), "\x1b[m");
    EXPECT_EQ(change("0;1;37;44", "0;37;44"), "\x1b[;37;44m");
    EXPECT_EQ(change("0;37", "0"), "\x1b[m");
    EXPECT_EQ(change("0;1;44", "0;1"), "\x1b[;1m");
    EXPECT_EQ(change("0;7", "0;4;37"), "\x1b[;4;37m");
}

TEST(LookChange, takes_all_back_where_nothing_is_known) {
    EXPECT_EQ(change("1", "0;1"), "\x1b[;1m");
    EXPECT_EQ(change("1", "0;1;37;44"), "\x1b[;1;37;44m");
    EXPECT_EQ(change("0;7", "0"), "\x1b[m");
}

TEST(LookChange, says_a_consoles_line_drawing_font_again_when_it_takes_all_back) {
    EXPECT_EQ(change("11;0;1", "11;0"), "\x1b[;11m");
    EXPECT_EQ(change("10;0;1", "10;0"), "\x1b[m");
    EXPECT_EQ(change("11;0", "10;0"), "\x1b[10m");
}

TEST(LookChange, says_character_sets_behind_the_rendition) {
    TerminalLook lines = look_after("0");
    lines[look_letters] = "\x1b(0";
    TerminalLook shifted = lines;
    shifted[look_shift] = "\x0e";
    EXPECT_EQ(look_change(look_after("0"), lines), "\x1b(0");
    EXPECT_EQ(look_change(lines, shifted), "\x0e");
    EXPECT_EQ(look_change(look_after("0;1"), shifted), "\x1b[m\x1b(0\x0e");
    EXPECT_EQ(look_change(shifted, shifted), "");
}

TEST(LookChange, says_character_sets_again_behind_a_font) {
    TerminalLook shifted = look_after("0");
    shifted[look_shift] = "\x0e";
    TerminalLook with_font = shifted;
    with_font[look_font] = "10";
    EXPECT_EQ(look_change(shifted, with_font), "\x1b[10m\x0e");
}

TEST(Looks, differ_in_boldness_only) {
    const TerminalLook look = look_after("0;1;37;44");
    EXPECT_TRUE(differ_in_boldness_only(look, look_after("0;37;44")));
    for (const char* parameters : {"0;1;30;44", "0;1;37;41", "0;1;37;44;7", "1;37;44"})
        EXPECT_FALSE(differ_in_boldness_only(look, look_after(parameters))) << parameters;
}

}  // namespace
