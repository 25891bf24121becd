// Lines as they are sent and read, and commands with their replies.

#include "apply/cli_session.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <functional>
#include <optional>
#include <string>
#include <thread>

#include "apply/server_session.h"
#include "tests/apply/scripted_session.h"
#include "tests/support/waits.h"
#include "wizard/base/heap_text.h"
#include "wizard/system/signal_gate.h"

namespace {

// The most bytes that one write(2) takes; 0: all of them.
size_t write_limit = 0;

std::optional<std::string> read_line(int descriptor) {
    const HeapText line(cli_read_line(descriptor));
    return line == nullptr ? std::nullopt : std::optional<std::string>(line.get());
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

class CliSendLine : public ScriptedSession {
  protected:
    int send(const std::string& text) { return cli_send_line(peer->clientEnd(), text.c_str()); }
};

TEST_F(CliSendLine, sends_every_8_bit_character_as_it_stands_with_cr_and_lf) {
    std::string text;
    for (int code = 1; code < 256; ++code) text += static_cast<char>(code);
    EXPECT_EQ(send(text), 0);
    EXPECT_EQ(peer->received(), text + "\r\n");
}

TEST_F(CliSendLine, sends_997_characters_and_nothing_of_998) {
    EXPECT_EQ(send(many(998)), EMSGSIZE);
    EXPECT_EQ(send(many(997)), 0);
    EXPECT_EQ(peer->received(), many(997) + "\r\n");
}

TEST_F(CliSendLine, goes_on_after_a_short_write_where_that_stopped) {
    write_limit = 4;
    const int result = send("set enable yes");
    write_limit = 0;
    EXPECT_EQ(result, 0);
    EXPECT_EQ(peer->received(), "set enable yes\r\n");
}

TEST_F(CliSendLine, waits_while_the_connection_takes_nothing) {
    size_t stuffed = 0;
    while (::send(peer->clientEnd(), "x", 1, 0) == 1) ++stuffed;
    Waits waits;
    int waited = 0;
    waits.atSocket = [&] {
        ++waited;
        peer->received();
    };
    EXPECT_EQ(send("commit"), 0);
    EXPECT_EQ(waited, 1);
    EXPECT_EQ(peer->received(), many(stuffed) + "commit\r\n");
}

TEST_F(CliSendLine, returns_the_error_of_a_write_that_fails) {
    peer->hangUp();
    EXPECT_EQ(send("commit"), EPIPE);
    EXPECT_EQ(cli_send_line(-1, "commit"), EBADF);
}

struct CompleteLine {
    const char* name;
    std::string bytes;
    std::string line;
    std::string rest = {};
};

const CompleteLine complete_lines[] = {
    {"a_line_without_its_cr_and_lf", "+OK: done\r\nmore", "+OK: done", "more"},
    {"an_empty_line", "\r\nmore", "", "more"},
    {"a_prompt_ends_the_line", "server> more", "server> ", "more"},
    {"a_bare_prompt", "> > ", "> ", "> "},
    {"a_cr_without_lf_is_dropped_with_the_byte_after_it", "a\rb c\r d\r\n", "a cd"},
    {"of_two_crs_both_are_dropped", "a\r\rb\r\n", "ab"},
    {"two_crs_before_an_lf_do_not_end_the_line", "a\r\r\nb\r\n", "a\nb"},
    {"an_lf_alone_does_not_end_the_line", "a\nb\r\n", "a\nb"},
    {"an_angle_bracket_without_a_space_is_dropped_with_the_byte_after_it", "a>b c>\nd\r\n", "a cd"},
    {"of_two_angle_brackets_both_are_dropped", "a>> b\r\n", "a b"},
    {"an_angle_bracket_swallows_the_cr_of_the_line_end", "a>\r\nb\r\n", "a\nb"},
    {"tabs_controls_and_bytes_above_127", "\t\x1b[7m\xff\x80\r\n", "\t\x1b[7m\xff\x80"},
    {"a_zero_byte_ends_the_text_but_not_the_line", {"a\0b\r\nmore", 9}, "a", "more"},
    {"a_line_of_255_characters", many(255) + "\r\n", many(255)},
    {"a_prompt_that_fills_256_characters", many(254) + "> ", many(254) + "> "},
};

TEST(CliReadLine, returns_the_line_and_reads_no_further) {
    for (const auto& [name, bytes, line, rest] : complete_lines) {
        const ScriptedPeer peer(bytes);
        EXPECT_EQ(read_line(peer.clientEnd()), line) << name;
        EXPECT_EQ(peer.unread(), rest) << name;
    }
}

TEST(CliReadLineInVain, returns_null) {
    for (const std::string& bytes :
         {std::string(), std::string("+OK: do"), std::string("+OK: done\r"), std::string("server>"),
          many(256) + "\r\n", many(5000), many(255) + "> "})
        EXPECT_EQ(read_line(ScriptedPeer(bytes).clientEnd()), std::nullopt) << bytes;
}

// What is sent and never read makes the other end's next read fail, after all it was sent.
TEST(CliReadLineInVain, returns_null_when_the_connection_is_reset) {
    for (const char* bytes : {"", "+OK: done\r", "server>"}) {
        ScriptedPeer peer(bytes);
        ASSERT_EQ(cli_send_line(peer.clientEnd(), "commit"), 0);
        peer.hangUp();
        EXPECT_EQ(read_line(peer.clientEnd()), std::nullopt) << bytes;
    }
}

// A connection that has no end, and a signal.
class CliReadLineSignals : public testing::Test {
  protected:
    CliReadLineSignals() {
        int ends[2];
        checked(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), "socketpair");
        client = Descriptor(ends[0]);
        server = Descriptor(ends[1]);
        hold_signal(SIGUSR1, [](int) { in_handler(); });
    }

    static inline std::function<void()> in_handler;
    Descriptor client;
    Descriptor server;
};

TEST_F(CliReadLineSignals, are_let_in_while_it_waits_and_it_reads_on) {
    fcntl(client.get(), F_SETFL, O_NONBLOCK);
    in_handler = [&] { send(server.get(), "+OK: done\r\n", 11, 0); };
    Waits waits;
    int waited = 0;
    waits.atSocket = [&] {
        if (++waited == 1) raise(SIGUSR1);
    };
    EXPECT_EQ(read_line(client.get()), "+OK: done");
}

class CliReadLineSignalsAmong : public CliReadLineSignals,
                                public testing::WithParamInterface<char> {};

TEST_P(CliReadLineSignalsAmong, bytes_that_are_left_out_are_let_in) {
    in_handler = [&] { shutdown(client.get(), SHUT_RDWR); };
    std::thread talker([&] {
        // More than the connection holds: some of it has been read.
        constexpr int blocks_before_the_signal = 75;
        const std::string block(4096, GetParam());
        for (int blocks = 0; send(server.get(), block.data(), 4096, MSG_NOSIGNAL) > 0; ++blocks) {
            if (blocks == blocks_before_the_signal) kill(getpid(), SIGUSR1);
        }
    });
    EXPECT_EQ(read_line(client.get()), std::nullopt);
    talker.join();
}

INSTANTIATE_TEST_SUITE_P(LeftOut, CliReadLineSignalsAmong, testing::Values('\r', '>'));

class CliCommand : public ScriptedSession {};

TEST_F(CliCommand, the_greeting_is_swallowed_up_to_its_prompt) {
    answer("TELUMA\r\nsee <http://teluma>!\r\n\r\nlogin> +OK: next\r\n");
    EXPECT_EQ(cli_wait_prompt(), 0);
    EXPECT_EQ(peer->unread(), "+OK: next\r\n");
    for (const std::string& greeting : {std::string("TELUMA\r\nlogin>"), many(256)}) {
        answer(greeting);
        EXPECT_EQ(cli_wait_prompt(), 1);
    }
}

TEST_F(CliCommand, is_sent_as_a_line_and_its_reply_read_no_further_than_the_prompt) {
    answer("+OK: done\r\nserver> -ERR: later\r\n");
    EXPECT_EQ(cli_command("commit"), 0);
    EXPECT_EQ(peer->received(), "commit\r\n");
    EXPECT_EQ(peer->unread(), "-ERR: later\r\n");
}

TEST_F(CliCommand, fails_when_it_cannot_be_sent_and_without_a_connection) {
    answer(accepted);
    peer->hangUp();
    EXPECT_EQ(cli_command("commit"), 1);
    server_session.socket.close();
    EXPECT_EQ(cli_command("commit"), 1);
    EXPECT_EQ(cli_wait_prompt(), 1);
}

struct JudgedReply {
    const char* name;
    std::string reply;
    int result;
};

using CliCommandReply = ScriptedSession;

const JudgedReply judged_replies[] = {
    {"ok_in_the_middle_of_a_line", "reply +OK: done\r\nserver> ", 0},
    {"ok_on_the_first_of_several_lines", "+OK: done\r\nmore\r\n-ERR: odd\r\nserver> ", 0},
    {"ok_on_the_last_of_several_lines", "one\r\n-ERR: odd\r\n+OK: done\r\nserver> ", 0},
    {"ok_only_on_the_prompt_line", "one\r\n+OK: done server> ", 0},
    {"refused", refused, 1},
    {"nothing_but_the_prompt", "server> ", 1},
    {"ok_without_the_plus", "OK: done\r\nserver> ", 1},
    {"ok_without_the_colon", "+OK done\r\nserver> ", 1},
    {"ok_after_the_prompt", "server> +OK: done\r\n", 1},
    {"no_prompt_after_ok", "+OK: done\r\n", 1},
    {"no_reply_at_all", "", 1},
    {"a_line_of_256_bytes_before_ok", many(256) + "\r\n" + accepted, 1},
    {"a_line_of_256_bytes_after_ok", "+OK: done\r\n" + many(256) + "\r\nserver> ", 1},
    {"a_line_of_255_bytes_before_ok", many(255) + "\r\n" + accepted, 0},
};

TEST_F(CliCommandReply, is_judged) {
    for (const auto& [name, reply, result] : judged_replies) {
        answer(reply);
        EXPECT_EQ(cli_command("commit"), result) << name;
    }
}

}  // namespace
