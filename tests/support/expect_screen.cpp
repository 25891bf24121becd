#include "tests/support/expect_screen.h"

#include "tests/support/screen_text.h"

namespace {

// A raw string literal begins with the newline after its opening bracket.
std::string literal_rows(const std::string& literal) {
    std::string rows;
    for (const std::string& line : split_lines(literal.substr(literal[0] == '\n' ? 1 : 0)))
        rows += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    return rows;
}

testing::AssertionResult same_text(const std::string& what, const std::string& expected,
                                   const std::string& drawn) {
    if (expected == drawn) return testing::AssertionSuccess();
    return testing::AssertionFailure() << what << " is not what was expected\n"
                                       << side_by_side(expected, drawn);
}

}  // namespace

testing::AssertionResult looks_same(const char* expected_expression, const char* drawn_expression,
                                    const ScreenImage& expected, const ScreenImage& drawn) {
    return same_text(std::string(drawn_expression) + ", compared with " + expected_expression + ",",
                     to_text(expected), to_text(drawn));
}

testing::AssertionResult picture_matches(const char* image_expression, const char*,
                                         const ScreenImage& image, const std::string& picture) {
    return same_text(std::string("the picture of ") + image_expression, literal_rows(picture),
                     image.text());
}

testing::AssertionResult colours_match(const char* image_expression, const char*,
                                       const ScreenImage& image, const std::string& letters) {
    return same_text(std::string("the colours of ") + image_expression, literal_rows(letters),
                     colour_letters(image));
}
