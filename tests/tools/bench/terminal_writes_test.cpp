#include <gtest/gtest.h>

#include <sstream>

#include "tools/bench/tracing.h"

namespace {

int writes_in(const std::string& log) {
    std::istringstream lines(log);
    return terminal_writes(read_trace(lines));
}

TEST(TerminalWrites, count_each_call_once_whatever_its_length) {
    EXPECT_EQ(writes_in("7 1.0 write(1</dev/pts/0>, \"\"..., 1024) = 1024 <0.1>\n"
                        "7 2.0 write(2</dev/pts/0>, \"\"..., 1) = 1 <0.1>\n"
                        "7 3.0 writev(1</dev/pts/0>, [{iov_len=3}], 1) = 3 <0.1>\n"),
              3);
}

TEST(TerminalWrites, leave_out_other_files) {
    EXPECT_EQ(writes_in("7 1.0 write(2</dev/null>, \"\"..., 5) = 5 <0.1>\n"
                        "7 2.0 write(4<socket:[1234]>, \"\"..., 5) = 5 <0.1>\n"
                        "7 3.0 write(3</dev/tty>, \"\"..., 5) = 5 <0.1>\n"),
              1);
}

TEST(TerminalWrites, leave_out_what_did_not_arrive) {
    EXPECT_EQ(writes_in("7 1.0 write(1</dev/pts/0>, \"\"..., 5) = -1 EAGAIN (again) <0.1>\n"), 0);
}

TEST(TerminalWrites, count_a_call_that_other_processes_interrupted_once) {
    EXPECT_EQ(writes_in("7 1.0 write(1</dev/pts/0>, \"\"..., 5 <unfinished ...>\n"
                        "7 2.0 <... write resumed>) = 5 <0.1>\n"),
              1);
}

}  // namespace
