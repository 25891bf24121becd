// What is left of the things that curses says to terminals.

#include "ui/terminal/output_thinner.h"

#include <gtest/gtest.h>

#include <string>

namespace {

const std::string plain = "\x1b(B\x1b[m";
const std::string white_on_blue = "\x1b(B\x1b[0;1m\x1b[37m\x1b[44m";

/// A thinner for a terminal that shows plain text.
class Thinner : public testing::Test {
  protected:
    Thinner() { thinner.thin(plain + "x"); }

    std::string thin(const std::string& said) { return thinner.thin(said); }

    OutputThinner thinner;
};

TEST_F(Thinner, lets_text_through) {
    EXPECT_EQ(thin("Password: ┌──┐ \x7f\r\n"), "Password: ┌──┐ \x7f\r\n");
}

TEST_F(Thinner, says_attributes_in_one_sequence) {
    EXPECT_EQ(thin(white_on_blue + "a"), "\x1b[1;37;44ma");
}

TEST_F(Thinner, does_not_take_back_attributes_that_come_again) {
    thin(white_on_blue + "a" + plain);
    EXPECT_EQ(thin(white_on_blue + "b" + plain), "b");
    EXPECT_EQ(thin(white_on_blue + "c" + plain), "c");
}

TEST_F(Thinner, takes_back_attributes_before_text_without_them) {
    thin(white_on_blue + "a" + plain);
    EXPECT_EQ(thin("b"), "\x1b[mb");
}

TEST_F(Thinner, takes_back_one_attribute_with_all_and_says_the_others_again) {
    thin(white_on_blue + "a");
    EXPECT_EQ(thin("\x1b[0m\x1b[37m\x1b[44mb"), "\x1b[;37;44mb");
    EXPECT_EQ(thin("\x1b[39mc"), "\x1b[;44mc");
    EXPECT_EQ(thin("\x1b[49md"), "\x1b[md");
}

TEST_F(Thinner, changes_a_colour_alone) {
    thin(white_on_blue + "a");
    EXPECT_EQ(thin("\x1b[40mb"), "\x1b[40mb");
    EXPECT_EQ(thin("\x1b[30mc"), "\x1b[30mc");
}

TEST_F(Thinner, owes_a_blank_nothing_but_boldness) {
    thin(white_on_blue + "a");
    EXPECT_EQ(thin("\x1b[0m\x1b[37m\x1b[44m   "), "   ");
    EXPECT_EQ(thin("\x1b[31m "), "\x1b[;31;44m ");
    EXPECT_EQ(thin("\x1b[1m\x1b[41m "), "\x1b[1;41m ");
    EXPECT_EQ(thin("\x1b[4m "), "\x1b[4m ");
}

TEST_F(Thinner, owes_what_erases_and_scrolls_nothing_but_boldness) {
    for (const std::string sequence :
         {"\x1b[K", "\x1b[1K", "\x1b[J", "\x1b[2J", "\x1b[5X", "\x1b[3P", "\x1b[2@", "\x1b[L",
          "\x1b[4M", "\x1b[S", "\x1b[T",
          "\x1b"
          "D",
          "\x1bM", "\n", "\v", "\f"}) {
        thin(plain + "x");
        thin(white_on_blue);
        EXPECT_EQ(thin(sequence), "\x1b[1;37;44m" + sequence);
        EXPECT_EQ(thin("\x1b[0;37;44m" + sequence), sequence);
    }
}

TEST_F(Thinner, moves_the_cursor_without_attributes) {
    for (const std::string sequence :
         {"\x1b[H", "\x1b[5;7H", "\x1b[5;7f", "\x1b[3A", "\x1b[B",  "\x1b[C", "\x1b[2D",
          "\x1b[E", "\x1b[F",    "\x1b[9G",   "\x1b[9`", "\x1b[9d", "\x1b[a", "\x1b[e",
          "\x1b[I", "\x1b[Z",    "\r",        "\b",      "\t",      "\a",     "\x7f"})
        EXPECT_EQ(thin(white_on_blue + sequence), sequence);
    EXPECT_EQ(thin("a"), "\x1b[1;37;44ma");
}

TEST_F(Thinner, keeps_a_repetition_behind_its_character) {
    EXPECT_EQ(thin(white_on_blue + "-\x1b[79b" + plain), "\x1b[1;37;44m-\x1b[79b");
    EXPECT_EQ(thin("\x1b[0;37;44m \x1b[20b"), " \x1b[20b");
}

TEST_F(Thinner, has_characters_repeated_that_take_several_bytes) {
    OutputThinner repeating(true);
    EXPECT_EQ(repeating.thin("┌───────────┐──"), "┌─\x1b[9b─┐──");
    EXPECT_EQ(repeating.thin("───\x1b[m───"), "───\x1b[m───");
    EXPECT_EQ(repeating.thin("-----------"), "-----------");
    EXPECT_EQ(thin("┌───────────┐"), "┌───────────┐");
}

TEST_F(Thinner, repeats_what_is_no_utf8_byte_by_byte) {
    OutputThinner repeating(true);
    EXPECT_EQ(repeating.thin("\xc4\xc4\xc4\xc4\xc4\xc4\xc4\xc4\xd9"), "\xc4\x1b[6b\xc4\xd9");
    EXPECT_EQ(repeating.thin("\xc3\x28\x80\x80"), "\xc3\x28\x80\x80");
}

TEST_F(Thinner, changes_the_character_set_when_it_matters) {
    EXPECT_EQ(thin("\x1b(0\x1b(B\x1b(0lqk\x1b(B\x1b[5;7H\x1b(0x\x1b(Ba"),
              "\x1b(0lqk\x1b[5;7Hx\x1b(Ba");
}

// Blanks of the line-drawing characters are boxes on some terminals.
TEST_F(Thinner, leaves_line_drawing_characters_before_blanks) {
    EXPECT_EQ(thin("\x1b(0lqk\x1b(B  \x1b(0x\x1b(Ba"), "\x1b(0lqk\x1b(B  \x1b(0x\x1b(Ba");
    thin("\x1b[0;10ma");
    EXPECT_EQ(thin("\x1b[11mq\x1b[10m \x1b[11mq\x1b[10m"), "\x1b[11mq\x1b[10m \x1b[11mq\x1b[10m");
    thin("\x0f");
    EXPECT_EQ(thin("\x0exx\x0f\x1b[K"), "\x0exx\x0f\x1b[K");
}

// A Linux console goes back to letters when it is told its font.
TEST_F(Thinner, says_the_character_set_behind_the_rendition) {
    EXPECT_EQ(thin("\x0e\x1b[0;10;1mq\x0f"), "\x1b[1;10m\x0eq\x0f");
    EXPECT_EQ(thin("\x0eq\x1b[0;10;37;44mq\x0f"), "\x0eq\x1b[;37;44mq\x0f");
    EXPECT_EQ(thin("\x0eq\x1b[11mq\x0f"), "\x0eq\x1b[11m\x0eq\x0f");
    EXPECT_EQ(thin("\x1b(0\x1b[30mq\x1b(B"), "\x1b[30m\x1b(0q\x1b(B");
}

TEST_F(Thinner, leaves_line_drawing_characters_in_the_end) {
    EXPECT_EQ(thin("\x1b(0x\x1b(B"), "\x1b(0x\x1b(B");
    thin("\x1b[0;10m");
    EXPECT_EQ(thin("\x1b[0;11;37mx\x1b[0;10m"), "\x1b[37;11mx\x1b[10m");
    EXPECT_EQ(thin("a"), "\x1b[ma");
    thin("\x0f");
    EXPECT_EQ(thin("\x0ex\x0f"), "\x0ex\x0f");
}

TEST_F(Thinner, shifts_between_character_sets) {
    EXPECT_EQ(thin("\x0f"
                   "a\x0e\x0f\x0eq\x0f"),
              "\x0f"
              "a\x0eq\x0f");
    EXPECT_EQ(thin("\x0eq\x0f"
                   "a"),
              "\x0eq\x0f"
              "a");
}

TEST_F(Thinner, keeps_a_consoles_line_drawing_font_when_it_takes_back_the_rest) {
    EXPECT_EQ(thin("\x1b[0;10;1ma"), "\x1b[1;10ma");
    EXPECT_EQ(thin("\x1b[11mq\x1b[10m\x1b[11m"), "\x1b[11mq");
    EXPECT_EQ(thin("\x1b[0;11mq"), "\x1b[;11mq");
    EXPECT_EQ(thin("\x1b[0;10mb"), "\x1b[10mb");
}

TEST_F(Thinner, says_a_mode_once) {
    EXPECT_EQ(thin("\x1b[?1h\x1b=\x1b[?25l"), "\x1b[?1h\x1b=\x1b[?25l");
    EXPECT_EQ(thin("\x1b[?1h\x1b=\x1b[?25l"), "");
    EXPECT_EQ(thin("\x1b[?1l\x1b>"), "\x1b[?1l\x1b>");
    EXPECT_EQ(thin("\x1b[?1h\x1b=\x1b[?25l"), "\x1b[?1h\x1b=");
    EXPECT_EQ(thin("\x1b[?7h\x1b[?12l\x1b[?7h\x1b[?12l"), "\x1b[?7h\x1b[?12l");
}

TEST_F(Thinner, says_margins_insertion_and_window_operations_as_they_are) {
    const std::string said = "\x1b[4l\x1b[1;24r\x1b[22;0;0t\x1b[34h\x1b)0";
    EXPECT_EQ(thin(said + said), said + said);
}

TEST_F(Thinner, keeps_account_across_what_changes_no_attributes) {
    thin(white_on_blue + "a");
    for (const std::string sequence :
         {"\x1b[4l", "\x1b[4h", "\x1b[1;24r", "\x1b[22;0;0t", "\x1b)0"})
        EXPECT_EQ(thin(sequence + white_on_blue + "b"), sequence + "b");
}

TEST_F(Thinner, says_all_before_and_behind_a_sequence_that_it_does_not_know) {
    for (const std::string sequence :
         {"\x1b[?1049h", "\x1b[?1;25h", "\x1b[!p",
          "\x1b"
          "7",
          "\x1b"
          "8",
          "\x1b"
          "c",
          "\x1b]104\a", "\x1b[2 q", "\x1b[>4m", "\x1b[=K", "\x1b#8", "\x1b%G", "\x1b[6n"}) {
        thin(plain + "x");
        EXPECT_EQ(thin(white_on_blue + sequence), "\x1b[1;37;44m" + sequence);
        EXPECT_EQ(thin(white_on_blue + "x"), "\x1b[;1;37;44m\x1b(Bx");
    }
}

TEST_F(Thinner, takes_nothing_for_granted_behind_a_sequence_that_it_does_not_know) {
    thin(white_on_blue +
         "a\x1b[?25h\x1b"
         "c");
    EXPECT_EQ(thin("\x1b[?25h\x1b(Ba\x1b[1mb"), "\x1b[?25h\x1b(Ba\x1b[1mb");
    EXPECT_EQ(thin("\x1b[m\x1b[37mc"), "\x1b[;37mc");
}

TEST_F(Thinner, lets_attributes_through_that_it_does_not_know) {
    thin(white_on_blue + "a");
    EXPECT_EQ(thin(plain + "\x1b[4m b\x1b[1mc"), "\x1b[;4m b\x1b[1mc");
    EXPECT_EQ(thin("\x1b[38;5;9md\x1b[7me"), "\x1b[38;5;9md\x1b[7me");
    EXPECT_EQ(thin(plain + "f"), "\x1b[mf");
}

TEST_F(Thinner, shows_blanks_with_attributes_that_it_does_not_know) {
    EXPECT_EQ(thin("\x1b[7m  \x1b[0m  "), "\x1b[7m  \x1b[m  ");
}

TEST_F(Thinner, knows_no_attributes_before_all_have_been_taken_back_once) {
    OutputThinner fresh;
    EXPECT_EQ(fresh.thin("\x1b[1ma\x1b[1;44mb "), "\x1b[1ma\x1b[1;44mb ");
    EXPECT_EQ(fresh.thin("\x1b[0;44mc"), "\x1b[;44mc");
}

TEST_F(Thinner, lets_through_what_terminals_say_that_know_no_such_sequences) {
    const std::string said = "\x1bG4\x1b=!\"Password\x1bG0\x1b`9\x1b*\x1b.\x1bH\x02\x1bH\x03";
    EXPECT_EQ(thin(said), said);
}

TEST_F(Thinner, lets_colours_beyond_all_numbers_through) {
    const std::string said = "\x1b[99999999999999999999ma";
    EXPECT_EQ(thin(said), said);
}

TEST_F(Thinner, lets_a_sequence_through_that_has_no_end) {
    for (const std::string said : {"\x1b", "\x1b[", "\x1b[1;", "\x1b(", "\x1b[?", "\x1b[!"})
        EXPECT_EQ(thin(said), said);
}

TEST_F(Thinner, settles_what_it_owes) {
    EXPECT_EQ(thinner.settle(), "");
    thin(white_on_blue + "a" + plain);
    EXPECT_EQ(thinner.settle(), "\x1b[m");
    EXPECT_EQ(thinner.settle(), "");
}

TEST_F(Thinner, takes_nothing_for_granted_once_it_has_settled) {
    thin(plain + "a\x1b[?25l");
    thinner.settle();
    EXPECT_EQ(thin(plain + "a\x1b[?25l"), "\x1b[m\x1b(Ba\x1b[?25l");
}

TEST_F(Thinner, says_what_it_owes_after_it_has_forgotten_what_it_knew) {
    thin(white_on_blue + "a\x1b[?25l" + plain);
    thinner.forget();
    EXPECT_EQ(thin("\x1b[?25lb"), "\x1b[m\x1b[?25lb");
}

}  // namespace
