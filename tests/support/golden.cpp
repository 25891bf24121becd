#include "tests/support/golden.h"

#include <cstdlib>
#include <filesystem>
#include <optional>

#include "tests/support/files.h"
#include "tests/support/screen_text.h"
#include "tests/support/terminal_program.h"

namespace {

bool updating() {
    const char* update = std::getenv("UPDATE_GOLDEN");
    return update != nullptr && std::string(update) == "1";
}

std::optional<std::string> content_of(const std::string& path) {
    if (!exists(path)) return std::nullopt;
    return read_file(path);
}

testing::AssertionResult write_golden(const std::string& path, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    write_file(path, text);
    return testing::AssertionFailure()
           << "written anew, look at it and run the test again without UPDATE_GOLDEN: " << path;
}

}  // namespace

std::string GoldenFile::path() const {
    // The compiler may have been given a name relative to the folder of the build.
    return (std::filesystem::path(BUILD_FOLDER) / test_source).parent_path() / (name + ".txt");
}

testing::AssertionResult screen_matches_golden(const char* screen_expression, const char*,
                                               const ScreenImage& image, const GoldenFile& file) {
    const std::string drawn = to_text(image);
    const std::optional<std::string> expected = content_of(file.path());
    if (expected == drawn) return testing::AssertionSuccess();
    if (updating()) return write_golden(file.path(), drawn);
    if (!expected) {
        return testing::AssertionFailure()
               << "there is no " << file.path() << "; UPDATE_GOLDEN=1 writes it from this:\n"
               << drawn;
    }
    return testing::AssertionFailure()
           << screen_expression << " does not look as in " << file.path() << "\n"
           << side_by_side(*expected, drawn);
}

testing::AssertionResult screen_matches_golden(const char* screen_expression,
                                               const char* file_expression,
                                               TerminalProgram& program, const GoldenFile& file) {
    const std::optional<std::string> expected = content_of(file.path());
    if (updating() || !expected)
        program.waitQuiet();
    else
        program.comesTo([&](const ScreenImage& image) { return to_text(image) == expected; });
    return screen_matches_golden(screen_expression, file_expression, program.image(), file);
}
