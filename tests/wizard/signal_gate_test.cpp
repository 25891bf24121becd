#include "wizard/system/signal_gate.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <functional>
#include <initializer_list>
#include <string>
#include <thread>

#include "tests/support/descriptor.h"

namespace {

// The program's mask from its start, with one signal blocked in it that nobody holds: it is to stay
// blocked in waits, and in children.
constexpr int blocked_from_outside = SIGUSR2;

class BlockedFromOutside : public testing::Environment {
  public:
    void SetUp() override {
        sigset_t blocked;
        sigemptyset(&blocked);
        sigaddset(&blocked, blocked_from_outside);
        sigprocmask(SIG_BLOCK, &blocked, nullptr);
    }
};

const testing::Environment* const blocked_environment =
    testing::AddGlobalTestEnvironment(new BlockedFromOutside);

bool is_blocked(int signal_number) {
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    return sigismember(&mask, signal_number) == 1;
}

int signals_seen = 0;
std::function<void()> on_signal;

void note_signal(int /*signal_number*/) {
    ++signals_seen;
    if (on_signal)
        on_signal();
}

class SignalGate : public testing::Test {
  protected:
    SignalGate() {
        signals_seen = 0;
        on_signal = nullptr;
        hold_signal(SIGUSR1, note_signal);
    }
    ~SignalGate() override { let_signals_in(); }

    Pipe pipe = make_pipe();

    void writeToPipe() { ASSERT_EQ(write(pipe.write_end.get(), "x", 1), 1); }
};

TEST_F(SignalGate, a_held_signal_does_not_interrupt_the_program) {
    raise(SIGUSR1);
    EXPECT_EQ(signals_seen, 0);
    EXPECT_TRUE(is_blocked(SIGUSR1));
}

TEST_F(SignalGate, a_signal_that_has_come_is_let_in_without_waiting) {
    raise(SIGUSR1);
    let_signals_in();
    EXPECT_EQ(signals_seen, 1);
    EXPECT_TRUE(is_blocked(SIGUSR1));
}

TEST_F(SignalGate, several_signals_are_held_together) {
    hold_signal(SIGURG, note_signal);
    raise(SIGUSR1);
    raise(SIGURG);
    EXPECT_EQ(signals_seen, 0);
    let_signals_in();
    EXPECT_EQ(signals_seen, 2);
}

TEST_F(SignalGate, a_handler_is_not_interrupted_by_another_signal) {
    hold_signal(SIGURG, note_signal);
    int depth = 0;
    int deepest = 0;
    on_signal = [&] {
        deepest = std::max(deepest, ++depth);
        if (signals_seen == 1)
            raise(SIGURG);
        --depth;
    };
    raise(SIGUSR1);
    let_signals_in();
    EXPECT_EQ(signals_seen, 2);
    EXPECT_EQ(deepest, 1);
}

TEST_F(SignalGate, a_signal_that_was_blocked_before_the_program_started_stays_so_in_waits) {
    on_signal = [] { EXPECT_TRUE(is_blocked(blocked_from_outside)); };
    raise(SIGUSR1);
    let_signals_in();
    EXPECT_EQ(signals_seen, 1);
}

TEST_F(SignalGate, waiting_to_read_ends_when_there_is_something) {
    writeToPipe();
    EXPECT_EQ(wait_readable(pipe.read_end.get()), 0);
}

TEST_F(SignalGate, waiting_to_read_ends_at_the_end_of_the_input) {
    pipe.write_end.close();
    EXPECT_EQ(wait_readable(pipe.read_end.get()), 0);
}

TEST_F(SignalGate, waiting_to_read_lets_a_signal_in_that_came_before_and_goes_on_waiting) {
    on_signal = [this] {
        if (signals_seen < 3)
            raise(SIGUSR1);
        else
            writeToPipe();
    };
    raise(SIGUSR1);
    EXPECT_EQ(wait_readable(pipe.read_end.get()), 0);
    EXPECT_EQ(signals_seen, 3);
    EXPECT_TRUE(is_blocked(SIGUSR1));
}

TEST_F(SignalGate, waiting_to_read_lets_a_signal_in_that_comes_meanwhile) {
    const pthread_t waiting = pthread_self();
    std::thread other([&] {
        on_signal = [this] { writeToPipe(); };
        pthread_kill(waiting, SIGUSR1);
    });
    EXPECT_EQ(wait_readable(pipe.read_end.get()), 0);
    other.join();
    EXPECT_EQ(signals_seen, 1);
}

TEST_F(SignalGate, what_can_be_read_at_once_is_told_before_any_signal_comes_in) {
    writeToPipe();
    raise(SIGUSR1);
    EXPECT_EQ(wait_readable(pipe.read_end.get()), 0);
    EXPECT_EQ(signals_seen, 0);
}

// Both ends of a connection; the first one's sending side is full.
struct FullConnection {
    Descriptor sender;
    Descriptor receiver;

    FullConnection() {
        int ends[2];
        checked(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), "socketpair");
        sender = Descriptor(ends[0]);
        receiver = Descriptor(ends[1]);
        const std::string piece(4096, 'x');
        while (send(sender.get(), piece.data(), piece.size(), MSG_DONTWAIT) > 0)
            continue;
    }

    void readAll() const {
        char piece[4096];
        while (recv(receiver.get(), piece, sizeof piece, MSG_DONTWAIT) > 0)
            continue;
    }
};

TEST_F(SignalGate, waiting_to_write_ends_when_there_is_room) {
    EXPECT_EQ(wait_writable(pipe.write_end.get()), 0);
    EXPECT_EQ(signals_seen, 0);
}

TEST_F(SignalGate, waiting_to_write_lets_signals_in_and_goes_on_waiting) {
    const FullConnection connection;
    on_signal = [&] {
        if (signals_seen < 3)
            raise(SIGUSR1);
        else
            connection.readAll();
    };
    raise(SIGUSR1);
    EXPECT_EQ(wait_writable(connection.sender.get()), 0);
    EXPECT_EQ(signals_seen, 3);
    EXPECT_TRUE(is_blocked(SIGUSR1));
}

TEST_F(SignalGate, a_descriptor_that_is_not_open_cannot_be_waited_for) {
    const int closed = pipe.read_end.get();
    pipe.read_end.close();
    EXPECT_EQ(wait_readable(closed), EBADF);
    EXPECT_EQ(wait_writable(closed), EBADF);
    EXPECT_EQ(wait_readable(-1), EBADF);
    EXPECT_EQ(wait_writable(-1), EBADF);
}

TEST_F(SignalGate, a_descriptor_of_any_number_can_be_waited_for) {
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit more = {before.rlim_max, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &more);
    const Descriptor reader(dup2(pipe.read_end.get(), FD_SETSIZE));
    const Descriptor writer(dup2(pipe.write_end.get(), FD_SETSIZE + 1));
    EXPECT_EQ(wait_writable(writer.get()), 0);
    on_signal = [this] { writeToPipe(); };
    raise(SIGUSR1);
    EXPECT_EQ(wait_readable(reader.get()), 0);
    EXPECT_EQ(signals_seen, 1);
    setrlimit(RLIMIT_NOFILE, &before);
}

TEST_F(SignalGate, a_sleep_lasts_its_whole_time_however_many_signals_come) {
    on_signal = [] {
        if (signals_seen < 100)
            raise(SIGUSR1);
    };
    raise(SIGUSR1);
    // No more than the least time is asked of it, so no slow machine can make this fail.
    const auto start = std::chrono::steady_clock::now();
    sleep_seconds(1);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    EXPECT_EQ(signals_seen, 100);
    EXPECT_TRUE(is_blocked(SIGUSR1));
}

TEST_F(SignalGate, a_sleep_of_no_time_lets_signals_in) {
    raise(SIGUSR1);
    sleep_seconds(0);
    EXPECT_EQ(signals_seen, 1);
    EXPECT_TRUE(is_blocked(SIGUSR1));
}

// A child that runs `work`, with the signals as fork(2) leaves them, and ends with what it returns.
pid_t start_child(const std::function<int()>& work) {
    const pid_t child = checked(fork(), "fork");
    if (child == 0)
        _exit(work());
    return child;
}

TEST_F(SignalGate, waiting_for_a_child_tells_how_it_ended) {
    const int status = wait_for_child(start_child([] { return 7; }));
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 7);
}

TEST_F(SignalGate, waiting_for_a_child_tells_of_the_signal_that_ended_it) {
    const int status = wait_for_child(start_child([] { return raise(SIGKILL); }));
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
}

TEST_F(SignalGate, waiting_for_a_child_lets_signals_in_and_goes_on_waiting) {
    const pid_t child = start_child([this] {
        char byte = 0;
        pipe.write_end.close();
        return static_cast<int>(read(pipe.read_end.get(), &byte, 1));
    });
    on_signal = [this] {
        if (signals_seen < 3)
            raise(SIGUSR1);
        else
            writeToPipe();
    };
    raise(SIGUSR1);
    const int status = wait_for_child(child);
    EXPECT_EQ(signals_seen, 3);
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_TRUE(is_blocked(SIGUSR1));
}

TEST_F(SignalGate, there_is_nothing_to_wait_for_without_a_child) {
    const pid_t child = start_child([] { return 0; });
    wait_for_child(child);
    EXPECT_EQ(wait_for_child(child), -1);
    EXPECT_TRUE(is_blocked(SIGUSR1));
}

bool has_default_action(int signal_number) {
    struct sigaction action = {};
    sigaction(signal_number, nullptr, &action);
    return action.sa_handler == SIG_DFL;
}

TEST_F(SignalGate, a_child_gets_the_signal_mask_of_the_programs_start) {
    const int status = wait_for_child(start_child([] {
        restore_signals_in_child();
        return (is_blocked(SIGUSR1) ? 1 : 0) + (is_blocked(blocked_from_outside) ? 2 : 0);
    }));
    EXPECT_EQ(WEXITSTATUS(status), 2);
}

TEST_F(SignalGate, a_child_gets_default_actions_in_place_of_handlers_and_of_ignoring) {
    ignore_signal(SIGPIPE);
    const int status = wait_for_child(start_child([] {
        restore_signals_in_child();
        return (has_default_action(SIGUSR1) ? 1 : 0) + (has_default_action(SIGPIPE) ? 2 : 0);
    }));
    EXPECT_EQ(WEXITSTATUS(status), 3);
}

TEST_F(SignalGate, a_child_ignores_what_the_program_was_started_to_ignore) {
    signal(SIGALRM, SIG_IGN);
    hold_signal(SIGALRM, note_signal);
    hold_signal(SIGALRM, note_signal);
    const int status = wait_for_child(start_child([] {
        restore_signals_in_child();
        return is_ignored(SIGALRM) ? 1 : 0;
    }));
    EXPECT_EQ(WEXITSTATUS(status), 1);
}

TEST_F(SignalGate, a_signal_that_was_ignored_and_blocked_before_is_let_in_once_it_is_held) {
    signal(SIGPROF, SIG_IGN);
    sigset_t profiling;
    sigemptyset(&profiling);
    sigaddset(&profiling, SIGPROF);
    sigprocmask(SIG_BLOCK, &profiling, nullptr);
    hold_signal(SIGPROF, note_signal);
    raise(SIGPROF);
    let_signals_in();
    EXPECT_EQ(signals_seen, 1);
}

TEST_F(SignalGate, a_child_is_waited_for_though_the_program_was_started_to_forget_its_children) {
    signal(SIGCHLD, SIG_IGN);
    keep_track_of_children();
    EXPECT_EQ(WEXITSTATUS(wait_for_child(start_child([] { return 7; }))), 7);
}

TEST_F(SignalGate, a_crash_in_a_handler_finds_its_signal_let_in) {
    on_signal = [] {
        for (const int crash : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGQUIT})
            EXPECT_FALSE(is_blocked(crash)) << crash;
        EXPECT_TRUE(is_blocked(SIGTERM));
    };
    raise(SIGUSR1);
    let_signals_in();
    EXPECT_EQ(signals_seen, 1);
}

TEST_F(SignalGate, an_ignored_signal_does_nothing) {
    ignore_signal(SIGPIPE);
    pipe.read_end.close();
    EXPECT_EQ(write(pipe.write_end.get(), "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
}

}  // namespace
