// What is left of the passwords in the wizard's memory, and what a crash would write of it.

#include <gtest/gtest.h>

#include <fstream>

#include "tests/e2e/apply_test.h"

namespace {

int occurrences(const std::string& text, const std::string& bytes) {
    int count = 0;
    for (size_t at = bytes.find(text); at != std::string::npos; at = bytes.find(text, at + 1))
        ++count;
    return count;
}

/// How often each of the texts is in the memory that a process may write to. That goes area by
/// area: a line of their table is "FROM-TO rw...". Areas that are too large to be anything but
/// reserved by the sanitizers are left out.
std::vector<int> copies_of(const std::vector<std::string>& texts, pid_t pid) {
    constexpr unsigned long most = 1UL << 28;
    const std::string process = "/proc/" + std::to_string(pid);
    std::ifstream areas(process + "/maps");
    std::ifstream memory(process + "/mem", std::ios::binary);
    std::vector<int> counts(texts.size());
    for (std::string line; std::getline(areas, line);) {
        size_t dash = 0;
        const unsigned long from = std::stoul(line, &dash, 16);
        const unsigned long to = std::stoul(line.substr(dash + 1), nullptr, 16);
        if (line.find(" rw") == std::string::npos || to - from > most) continue;
        std::string bytes(to - from, '\0');
        memory.clear();
        memory.seekg(static_cast<std::streamoff>(from));
        memory.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        bytes.resize(static_cast<size_t>(memory.gcount()));
        for (size_t i = 0; i < texts.size(); ++i) counts[i] += occurrences(texts[i], bytes);
    }
    return counts;
}

class ApplySecrets : public ApplyTest {};

TEST_F(ApplySecrets, are_in_the_fields_of_their_screens_alone_when_they_have_been_applied) {
    answers.password = "A\"m1n secret that stands alone";
    answers.postmaster_password = "P0stmaster's, which does too";
    runToOk();
    wizard.waitForKey();
    EXPECT_EQ(
        copies_of({answers.password, answers.postmaster_password, "A\\\"m1n secret"}, wizard.pid()),
        (std::vector<int>{2, 1, 0}));
    EXPECT_EQ(wizard.finish(), exited(0));
}

}  // namespace
