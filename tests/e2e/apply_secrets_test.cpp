// What is left of the passwords in the wizard's memory, and what a crash would write of it.

#include <gtest/gtest.h>

#include <fstream>

#include "tests/e2e/apply_test.h"

namespace {

class ApplySecrets : public ApplyTest {
  protected:
    /// How often the wizard's memory holds this text.
    int copiesOf(const std::string& text) const {
        const std::string process = "/proc/" + std::to_string(wizard.pid());
        std::ifstream areas(process + "/maps");
        std::ifstream memory(process + "/mem", std::ios::binary);
        int copies = 0;
        for (std::string line; std::getline(areas, line);)
            copies += occurrences(text, area(memory, line));
        return copies;
    }

  private:
    /// The bytes of an area by its line in the table of them: "FROM-TO rw..."; none of one that
    /// can't be written, or is too large to be anything but reserved by the sanitizers.
    static std::string area(std::ifstream& memory, const std::string& line) {
        constexpr unsigned long most = 1UL << 28;
        size_t dash = 0;
        const unsigned long from = std::stoul(line, &dash, 16);
        size_t length = 0;
        const unsigned long to = std::stoul(line.substr(dash + 1), &length, 16);
        if (line.compare(dash + 1 + length, 3, " rw") != 0 || to - from > most)
            return "";
        std::string bytes(to - from, '\0');
        memory.clear();
        memory.seekg(static_cast<std::streamoff>(from));
        memory.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        bytes.resize(static_cast<size_t>(memory.gcount()));
        return bytes;
    }

    static int occurrences(const std::string& text, const std::string& bytes) {
        int count = 0;
        for (size_t at = bytes.find(text); at != std::string::npos; at = bytes.find(text, at + 1))
            ++count;
        return count;
    }
};

TEST_F(ApplySecrets, are_in_the_fields_of_their_screens_alone_when_they_have_been_applied) {
    answers.password = "A\"m1n secret that stands alone";
    answers.postmaster_password = "P0stmaster's, which does too";
    wizard.walkToTheEnd(answers);
    wizard.waitForDialog(" OK ");
    EXPECT_EQ(copiesOf(answers.password), 2);
    EXPECT_EQ(copiesOf(answers.postmaster_password), 1);
    EXPECT_EQ(copiesOf("A\\\"m1n secret"), 0);
    EXPECT_EQ(wizard.finish(), exited(0));
}

TEST_F(ApplySecrets, are_forgotten_as_far_as_they_have_been_applied_when_a_later_step_fails) {
    server.faults("\"create domain\" 1 refuse\n");
    wizard.walkToTheEnd(answers);
    wizard.dismissError("already exist!");
    wizard.waitForScreen(Stop::domain);
    EXPECT_EQ(copiesOf(answers.password), 2);
    wizard.walkToTheEnd(answers, Stop::domain);
    EXPECT_EQ(wizard.finish(), exited(0));
}

}  // namespace
