#include "apply/cli_session.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <optional>
#include <string>
#include <thread>

#include "tests/apply/scripted_peer.h"
#include "tests/support/case_name.h"
#include "tests/support/waits.h"
#include "wizard/base/heap_text.h"
#include "wizard/system/signal_gate.h"

namespace {

// The most bytes that one write(2) takes; 0: all of them.
size_t write_limit = 0;

int handled_signals = 0;

void count_signal(int /*number*/) { ++handled_signals; }

std::optional<std::string> read_line(ScriptedPeer& peer) {
    const HeapText line(cli_read_line(peer.clientEnd()));
    return line == nullptr ? std::nullopt : std::optional<std::string>(line.get());
}

std::optional<std::string> read_line(const std::string& bytes) {
    ScriptedPeer peer(bytes);
    return read_line(peer);
}

std::string many(size_t count) { return std::string(count, 'x'); }

}  // namespace

// In the place of the C library's, for writes that the kernel takes only in part.
extern "C" ssize_t write(int descriptor, const void* bytes, size_t count) {
    using Write = ssize_t(int, const void*, size_t);
    static auto* const real_write = reinterpret_cast<Write*>(dlsym(RTLD_NEXT, "write"));
    return real_write(descriptor, bytes, write_limit == 0 ? count : std::min(count, write_limit));
}

namespace {

TEST(CliSendLine, sends_every_8_bit_character_as_it_stands_with_cr_and_lf) {
    std::string text;
    for (int code = 1; code < 256; ++code) text += static_cast<char>(code);
    ScriptedPeer peer("");
    EXPECT_EQ(cli_send_line(peer.clientEnd(), text.c_str()), 0);
    EXPECT_EQ(peer.received(), text + "\r\n");
}

TEST(CliSendLine, sends_997_characters_and_nothing_of_998) {
    ScriptedPeer peer("");
    EXPECT_EQ(cli_send_line(peer.clientEnd(), many(998).c_str()), EMSGSIZE);
    EXPECT_EQ(cli_send_line(peer.clientEnd(), many(997).c_str()), 0);
    EXPECT_EQ(peer.received(), many(997) + "\r\n");
}

TEST(CliSendLine, goes_on_after_a_short_write_where_that_stopped) {
    ScriptedPeer peer("");
    write_limit = 4;
    const int result = cli_send_line(peer.clientEnd(), "set enable yes");
    write_limit = 0;
    EXPECT_EQ(result, 0);
    EXPECT_EQ(peer.received(), "set enable yes\r\n");
}

TEST(CliSendLine, waits_while_the_connection_takes_nothing) {
    ScriptedPeer peer("");
    size_t stuffed = 0;
    const std::string block = many(4096);
    for (ssize_t sent = 0; sent != -1; sent = send(peer.clientEnd(), block.data(), 4096, 0))
        stuffed += static_cast<size_t>(sent);
    Waits waits;
    int waited = 0;
    waits.atSocket = [&] {
        ++waited;
        peer.received();
    };
    EXPECT_EQ(cli_send_line(peer.clientEnd(), "commit"), 0);
    EXPECT_EQ(waited, 1);
    EXPECT_EQ(peer.received(), many(stuffed) + "commit\r\n");
}

TEST(CliSendLine, returns_the_error_of_a_write_that_fails) {
    signal(SIGPIPE, SIG_IGN);
    ScriptedPeer peer("");
    peer.hangUp();
    EXPECT_EQ(cli_send_line(peer.clientEnd(), "commit"), EPIPE);
    EXPECT_EQ(cli_send_line(-1, "commit"), EBADF);
}

struct ReplyCase {
    const char* name;
    std::string bytes;
    std::string line;
    std::string rest;
};

class CliReadLine : public testing::TestWithParam<ReplyCase> {};

TEST_P(CliReadLine, returns_the_line_and_reads_no_further) {
    ScriptedPeer peer(GetParam().bytes);
    EXPECT_EQ(read_line(peer), GetParam().line);
    EXPECT_EQ(peer.unread(), GetParam().rest);
}

const ReplyCase complete_lines[] = {
    {"a_line_without_its_cr_and_lf", "+OK: done\r\nmore", "+OK: done", "more"},
    {"an_empty_line", "\r\nmore", "", "more"},
    {"a_prompt_ends_the_line", "server> more", "server> ", "more"},
    {"a_bare_prompt", "> > ", "> ", "> "},
    {"a_cr_without_lf_is_dropped_with_the_byte_after_it", "a\rb c\r\n", "a c", ""},
    {"of_two_crs_both_are_dropped", "a\r\rb\r\n", "ab", ""},
    {"two_crs_before_an_lf_do_not_end_the_line", "a\r\r\nb\r\n", "a\nb", ""},
    {"an_lf_alone_does_not_end_the_line", "a\nb\r\n", "a\nb", ""},
    {"an_angle_bracket_without_a_space_is_dropped_with_the_byte_after_it", "a>b c\r\nmore", "a c",
     "more"},
    {"of_two_angle_brackets_both_are_dropped", "a>> b\r\n", "a b", ""},
    {"an_angle_bracket_swallows_the_cr_of_the_line_end", "a>\r\nb\r\n", "a\nb", ""},
    {"tabs_controls_and_bytes_above_127", "\t\x1b[7m\xff\x80\r\n", "\t\x1b[7m\xff\x80", ""},
    {"a_line_of_255_characters", many(255) + "\r\n", many(255), ""},
    {"a_prompt_that_fills_256_characters", many(254) + "> ", many(254) + "> ", ""},
};

INSTANTIATE_TEST_SUITE_P(Complete, CliReadLine, testing::ValuesIn(complete_lines), CaseName());

TEST(CliReadLineInVain, returns_null) {
    const std::string incomplete_lines[] = {
        "", "+OK: do", "+OK: done\r", "server>", many(256) + "\r\n", many(5000), many(255) + "> "};
    for (const std::string& bytes : incomplete_lines)
        EXPECT_EQ(read_line(bytes), std::nullopt) << bytes;
}

TEST(CliReadLineBytes, a_zero_byte_is_a_byte_of_the_line) {
    ScriptedPeer peer(std::string("a\0b\r\nmore", 9));
    const HeapText line(cli_read_line(peer.clientEnd()));
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line.get()[0], 'a');
    EXPECT_EQ(peer.unread(), "more");
}

// What is sent and never read makes the other end's next read fail, after all it was sent.
TEST(CliReadLineReset, returns_null_when_the_connection_is_reset) {
    for (const char* bytes : {"", "+OK: done\r", "server>"}) {
        ScriptedPeer peer(bytes);
        ASSERT_EQ(cli_send_line(peer.clientEnd(), "commit"), 0);
        peer.hangUp();
        EXPECT_EQ(read_line(peer), std::nullopt) << bytes;
    }
}

TEST(CliReadLineSignals, lets_signals_in_also_where_it_never_has_to_wait) {
    hold_signal(SIGUSR1, count_signal);
    handled_signals = 0;
    raise(SIGUSR1);
    EXPECT_EQ(handled_signals, 0);
    EXPECT_EQ(read_line("+OK: done\r\n"), "+OK: done");
    EXPECT_EQ(handled_signals, 1);
}

TEST(CliReadLineSignals, lets_signals_in_while_it_waits_and_reads_on) {
    hold_signal(SIGUSR1, count_signal);
    handled_signals = 0;
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0);
    const Descriptor client(ends[0]);
    const Descriptor server(ends[1]);
    Waits waits;
    waits.atSocket = [&] {
        if (handled_signals == 0)
            raise(SIGUSR1);
        else
            send(server.get(), "+OK: done\r\n", 11, 0);
    };
    const HeapText line(cli_read_line(client.get()));
    EXPECT_STREQ(line.get(), "+OK: done");
    EXPECT_EQ(handled_signals, 1);
}

// The client's end of a connection, to be cut by a signal.
int interrupted_end = -1;

void cut_connection(int /*number*/) { shutdown(interrupted_end, SHUT_RDWR); }

// Sends `bytes` over and over until the other end is gone, and this process a signal meanwhile.
void talk_without_end(int descriptor, const std::string& bytes) {
    // More than the connection holds: some of it has been read.
    constexpr size_t enough_to_be_in_the_middle = 300000;
    size_t sent = 0;
    ssize_t length = 0;
    while ((length = send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL)) > 0) {
        const size_t before = sent;
        sent += static_cast<size_t>(length);
        if (before < enough_to_be_in_the_middle && sent >= enough_to_be_in_the_middle)
            kill(getpid(), SIGUSR1);
    }
}

TEST(CliReadLineSignals, lets_signals_in_among_bytes_that_are_left_out) {
    hold_signal(SIGUSR1, cut_connection);
    for (const char left_out : {'\r', '>'}) {
        int ends[2];
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
        const Descriptor client(ends[0]);
        const Descriptor server(ends[1]);
        interrupted_end = client.get();
        std::thread talker(talk_without_end, server.get(), std::string(4096, left_out));
        const HeapText line(cli_read_line(client.get()));
        talker.join();
        EXPECT_EQ(line, nullptr);
    }
}

}  // namespace
