#include "tests/support/pty.h"

#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace {

winsize size_of(const Descriptor& terminal) {
    winsize size{};
    ioctl(terminal.get(), TIOCGWINSZ, &size);
    return size;
}

TEST(Pty, the_program_sees_the_size_and_its_changes) {
    Pty pty(20, 72);
    const Descriptor program = pty.openProgramSide();
    EXPECT_EQ(size_of(program).ws_row, 20);
    EXPECT_EQ(size_of(program).ws_col, 72);
    pty.resize(60, 200);
    EXPECT_EQ(size_of(program).ws_row, 60);
    EXPECT_EQ(size_of(program).ws_col, 200);
}

TEST(Pty, what_the_program_writes_arrives_and_reading_never_waits) {
    Pty pty(24, 80);
    EXPECT_EQ(pty.read(), "");
    const Descriptor program = pty.openProgramSide();
    ASSERT_EQ(write(program.get(), "hello\n", 6), 6);
    EXPECT_EQ(pty.read(), "hello\r\n");
}

TEST(Pty, what_is_typed_arrives_at_the_program_line_by_line) {
    Pty pty(24, 80);
    const Descriptor program = pty.openProgramSide();
    EXPECT_EQ(pty.write("yes\r"), 4U);
    char line[16] = {};
    ASSERT_EQ(read(program.get(), line, sizeof line), 4);
    EXPECT_STREQ(line, "yes\n");
}

TEST(Pty, what_was_written_before_a_read_is_in_it_every_time) {
    Pty pty(24, 80);
    const Descriptor program = pty.openProgramSide();
    for (int round = 0; round < 2000; ++round) {
        ASSERT_EQ(write(program.get(), "hello", 5), 5);
        ASSERT_EQ(pty.read(), "hello");
    }
}

TEST(Pty, modes_that_a_program_changes_are_seen_and_stay_when_it_closes_the_terminal) {
    Pty pty(24, 80);
    const TerminalModes before = pty.modes();
    EXPECT_TRUE(before.echo());
    EXPECT_TRUE(before.canonical());
    {
        const Descriptor program = pty.openProgramSide();
        TerminalModes raw = before;
        cfmakeraw(&raw.settings);
        ASSERT_EQ(tcsetattr(program.get(), TCSANOW, &raw.settings), 0);
    }
    EXPECT_NE(pty.modes(), before);
    EXPECT_FALSE(pty.modes().echo());
    EXPECT_FALSE(pty.modes().canonical());
}

TEST(Pty, modes_are_printed_with_the_names_of_the_common_flags) {
    const Pty pty(24, 80);
    EXPECT_NE(testing::PrintToString(pty.modes()).find(" echo icanon isig icrnl opost onlcr"),
              std::string::npos);
}

TEST(Pty, after_a_hang_up_the_program_can_neither_read_nor_write) {
    Pty pty(24, 80);
    const Descriptor program = pty.openProgramSide();
    pty.hangUp();
    char byte;
    EXPECT_EQ(read(program.get(), &byte, 1), 0);
    EXPECT_EQ(write(program.get(), "x", 1), -1);
    EXPECT_EQ(errno, EIO);
}

TEST(Pty, a_terminal_without_a_session_has_no_foreground_group) {
    const Pty pty(24, 80);
    EXPECT_EQ(pty.foregroundGroup(), 0);
}

TEST(ReadTerminalModes, of_what_is_no_terminal_throws) {
    const Pipe pipe = make_pipe();
    EXPECT_THROW(read_terminal_modes(pipe.read_end.get()), std::system_error);
}

}  // namespace
