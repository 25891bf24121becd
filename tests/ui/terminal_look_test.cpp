#include "ui/terminal_look.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TerminalLook look_after(const std::vector<int>& parameters) {
    TerminalLook look = unknown_terminal_look;
    take_rendition(look, parameters);
    return look;
}

std::string change(const std::vector<int>& from, const std::vector<int>& to) {
    return rendition_change(look_after(from), look_after(to));
}

TEST(TerminalLook, is_known_once_all_has_been_taken_back) {
    EXPECT_FALSE(is_known(look_after({1, 37})));
    EXPECT_TRUE(is_known(look_after({0})));
    EXPECT_FALSE(is_known(look_after({1, 37, 44})));
    EXPECT_FALSE(is_known(look_after({0, 4})));
    EXPECT_TRUE(is_known(look_after({4, 0, 1})));
}

TEST(TerminalLook, stays_unknown_when_more_is_asked_for_than_it_holds) {
    EXPECT_FALSE(is_known(look_after({0, 7, 1, 37, 44})));
}

TEST(TerminalLook, does_not_take_the_numbers_of_extended_colours_for_others) {
    for (const int colour : {38, 48, 58}) {
        EXPECT_FALSE(is_known(look_after({0, colour, 5, 0})));
        EXPECT_FALSE(is_known(look_after({0, colour, 2, 0, 1, 30})));
    }
}

TEST(TerminalLook, holds_what_was_asked_for_last) {
    const TerminalLook look = look_after({0, 1, 31, 37, 41, 44, 11});
    EXPECT_EQ(look.bold, 1);
    EXPECT_EQ(look.foreground, 37);
    EXPECT_EQ(look.background, 44);
    EXPECT_EQ(look.font, 11);
}

TEST(TerminalLook, holds_eight_colours_and_the_terminals_own) {
    for (const int colour : {0, 1, 2, 3, 4, 5, 6, 7, 9}) {
        EXPECT_EQ(look_after({0, 30 + colour}).foreground, 30 + colour);
        EXPECT_EQ(look_after({0, 40 + colour}).background, 40 + colour);
    }
    for (const int parameter : {29, 38, 48, 50, 90, 100})
        EXPECT_FALSE(is_known(look_after({0, parameter}))) << parameter;
}

TEST(TerminalLook, keeps_its_font_when_the_rest_is_taken_back) {
    EXPECT_EQ(look_after({11, 0}).font, 11);
}

TEST(RenditionChange, is_nothing_between_the_same) {
    EXPECT_EQ(change({0, 1, 37, 44}, {0, 44, 37, 1}), "");
    EXPECT_EQ(change({4}, {4}), "");
}

TEST(RenditionChange, adds_what_is_new) {
    EXPECT_EQ(change({0}, {0, 1}), "\x1b[1m");
    EXPECT_EQ(change({0, 1}, {0, 1, 37, 44}), "\x1b[37;44m");
    EXPECT_EQ(change({0, 1, 37, 44}, {0, 1, 30, 41}), "\x1b[30;41m");
}

TEST(RenditionChange, takes_all_back_for_what_is_gone) {
    EXPECT_EQ(change({0, 1}, {0}), "\x1b[m");
    EXPECT_EQ(change({0, 1, 37, 44}, {0, 37, 44}), "\x1b[;37;44m");
    EXPECT_EQ(change({0, 37}, {0}), "\x1b[m");
    EXPECT_EQ(change({0, 1, 44}, {0, 1}), "\x1b[;1m");
}

TEST(RenditionChange, takes_all_back_where_nothing_is_known) {
    EXPECT_EQ(change({}, {0, 1}), "\x1b[;1m");
    EXPECT_EQ(change({}, {0, 1, 37, 44}), "\x1b[;1;37;44m");
    EXPECT_EQ(change({0, 7}, {0}), "\x1b[m");
}

TEST(RenditionChange, says_a_consoles_line_drawing_font_again_when_it_takes_all_back) {
    EXPECT_EQ(change({11, 0, 1}, {11, 0}), "\x1b[;11m");
    EXPECT_EQ(change({10, 0, 1}, {10, 0}), "\x1b[m");
    EXPECT_EQ(change({11, 0}, {10, 0}), "\x1b[10m");
}

TEST(CharacterSetChange, says_only_what_is_different) {
    TerminalLook lines = unknown_terminal_look;
    lines.g0 = '0';
    TerminalLook shifted = lines;
    shifted.shift = 14;
    EXPECT_EQ(character_set_change(unknown_terminal_look, lines), "\x1b(0");
    EXPECT_EQ(character_set_change(lines, shifted), "\x0e");
    EXPECT_EQ(character_set_change(unknown_terminal_look, shifted), "\x1b(0\x0e");
    EXPECT_EQ(character_set_change(shifted, shifted), "");
}

}  // namespace
