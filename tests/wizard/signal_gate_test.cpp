#include "wizard/system/signal_gate.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <thread>

#include "tests/support/descriptor.h"
#include "tests/support/process.h"
#include "wizard/start_up.h"

namespace {

// What the program was started with: a signal that nobody holds is blocked, and is to stay so in
// waits, and in children; one is blocked and ignored until somebody does.
constexpr int blocked_from_outside = SIGUSR2;
constexpr int shut_out = SIGPROF;

const bool is_started_like_that = [] {
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, blocked_from_outside);
    sigaddset(&blocked, shut_out);
    signal(shut_out, SIG_IGN);
    return sigprocmask(SIG_BLOCK, &blocked, nullptr) == 0;
}();

bool is_blocked(int signal_number) {
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    return sigismember(&mask, signal_number) == 1;
}

int signals_seen = 0;
std::function<void()> on_signal;

void note_signal(int /*signal_number*/) {
    ++signals_seen;
    if (on_signal) on_signal();
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

TEST_F(SignalGate, holds_signals_back_until_they_are_let_in_however_they_were_before) {
    hold_signal(shut_out, note_signal);
    raise(SIGUSR1);
    raise(shut_out);
    EXPECT_EQ(signals_seen, 0);
    let_signals_in(shut_out);
    EXPECT_EQ(signals_seen, 1);
    let_signals_in();
    EXPECT_EQ(signals_seen, 2);
    EXPECT_TRUE(is_blocked(SIGUSR1) && is_blocked(shut_out));
}

TEST_F(SignalGate, a_handler_finds_all_signals_blocked_but_crashes) {
    on_signal = [] {
        for (const int crash : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGQUIT})
            EXPECT_FALSE(is_blocked(crash)) << crash;
        for (const int other : {SIGTERM, SIGWINCH, SIGUSR1, blocked_from_outside})
            EXPECT_TRUE(is_blocked(other)) << other;
    };
    raise(SIGUSR1);
    let_signals_in();
    EXPECT_EQ(signals_seen, 1);
}

TEST_F(SignalGate, endings_alone_are_let_in_where_nothing_may_draw) {
    hold_signal(SIGTERM, note_signal);
    raise(SIGUSR1);
    raise(SIGTERM);
    {
        const ChangedMask here = let_endings_in();
        EXPECT_EQ(signals_seen, 1);
        EXPECT_FALSE(is_blocked(SIGTERM));
    }
    EXPECT_TRUE(is_blocked(SIGTERM));
}

TEST_F(SignalGate, waiting_to_read_ends_at_once_with_something_or_at_the_end_of_the_input) {
    writeToPipe();
    raise(SIGUSR1);
    EXPECT_EQ(wait_for(pipe.read_end.get(), POLLIN), 0);
    EXPECT_EQ(signals_seen, 0) << "what is there comes before any signal";
    let_signals_in();
    Pipe ended = make_pipe();
    ended.write_end.close();
    EXPECT_EQ(wait_for(ended.read_end.get(), POLLIN), 0);
}

// Three signals come in one after the other during `wait`, and the last one does what it is waiting
// for.
void expect_signals_during(const std::function<void()>& wait, const std::function<void()>& last) {
    signals_seen = 0;
    on_signal = [&last] {
        if (signals_seen < 3)
            raise(SIGUSR1);
        else
            last();
    };
    raise(SIGUSR1);
    wait();
    on_signal = nullptr;
    EXPECT_EQ(signals_seen, 3);
    EXPECT_TRUE(is_blocked(SIGUSR1));
}

TEST_F(SignalGate, waiting_to_read_lets_a_signal_in_that_comes_meanwhile) {
    const pthread_t waiting = pthread_self();
    std::thread other([&] {
        on_signal = [this] { writeToPipe(); };
        pthread_kill(waiting, SIGUSR1);
    });
    EXPECT_EQ(wait_for(pipe.read_end.get(), POLLIN), 0);
    other.join();
    EXPECT_EQ(signals_seen, 1);
}

TEST_F(SignalGate, waiting_to_write_lets_signals_in_and_goes_on_until_there_is_room) {
    EXPECT_EQ(wait_for(pipe.write_end.get(), POLLOUT), 0);
    fcntl(pipe.write_end.get(), F_SETFL, O_NONBLOCK);
    std::string piece(65536, 'x');
    while (write(pipe.write_end.get(), piece.data(), piece.size()) > 0) continue;
    expect_signals_during(
        [this] { EXPECT_EQ(wait_for(pipe.write_end.get(), POLLOUT), 0); },
        [&] { EXPECT_GT(read(pipe.read_end.get(), &piece[0], piece.size()), 0); });
}

TEST_F(SignalGate, a_descriptor_of_any_number_can_be_waited_for_if_it_is_open) {
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit more = {before.rlim_max, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &more);
    const Descriptor reader(dup2(pipe.read_end.get(), FD_SETSIZE));
    Descriptor writer(dup2(pipe.write_end.get(), FD_SETSIZE + 1));
    EXPECT_EQ(wait_for(writer.get(), POLLOUT), 0);
    writer.close();
    writeToPipe();
    EXPECT_EQ(wait_for(reader.get(), POLLIN), 0);
    for (const int closed : {-1, FD_SETSIZE + 1}) {
        EXPECT_EQ(wait_for(closed, POLLIN), EBADF);
        EXPECT_EQ(wait_for(closed, POLLOUT), EBADF);
    }
    setrlimit(RLIMIT_NOFILE, &before);
}

TEST_F(SignalGate, a_sleep_lasts_its_whole_time_however_many_signals_come) {
    // No more than the least time is asked of it, so no slow machine can make this fail.
    const auto start = std::chrono::steady_clock::now();
    expect_signals_during([] { sleep_seconds(1); }, [] {});
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    raise(SIGUSR1);
    sleep_seconds(0);
    EXPECT_EQ(signals_seen, 4) << "a sleep of no time lets signals in too";
}

// A child that runs `work`, with the signals as fork(2) leaves them, and ends with what it returns.
pid_t start_child(const std::function<int()>& work) {
    const pid_t child = checked(fork(), "fork");
    if (child == 0) _exit(work());
    return child;
}

ExitStatus status_of_child(const std::function<int()>& work) {
    return from_wait_status(wait_for_child(start_child(work)));
}

TEST_F(SignalGate, waiting_for_a_child_tells_how_it_ended_whatever_the_program_was_started_with) {
    EXPECT_EQ(status_of_child([] {
                  signal(SIGCHLD, SIG_IGN);
                  prepare_process();
                  return status_of_child([] { return 7; }) == exited(7) ? 0 : 1;
              }),
              exited(0));
    EXPECT_EQ(status_of_child([] { return raise(SIGKILL); }), killed_by(SIGKILL));
    EXPECT_EQ(wait_for_child(getpid()), -1) << "no child";
}

TEST_F(SignalGate, waiting_for_a_child_lets_signals_in_and_goes_on_waiting) {
    const pid_t child = start_child([this] {
        char byte = 0;
        pipe.write_end.close();
        return static_cast<int>(read(pipe.read_end.get(), &byte, 1));
    });
    expect_signals_during(
        [child] { EXPECT_EQ(from_wait_status(wait_for_child(child)), exited(1)); },
        [this] { writeToPipe(); });
}

TEST_F(SignalGate, a_child_gets_the_signals_as_the_program_was_started_with_them) {
    signal(SIGALRM, SIG_IGN);
    hold_signal(SIGALRM, note_signal);
    hold_signal(SIGALRM, note_signal);
    ignore_signal(SIGPIPE);
    EXPECT_TRUE(is_ignored(SIGPIPE));
    const auto has_default_action = [](int signal_number) {
        struct sigaction action = {};
        sigaction(signal_number, nullptr, &action);
        return action.sa_handler == SIG_DFL;
    };
    EXPECT_EQ(status_of_child([&] {
                  restore_signals_in_child();
                  const bool as_at_the_start = is_ignored(SIGALRM) && has_default_action(SIGUSR1) &&
                                               has_default_action(SIGPIPE) &&
                                               !is_blocked(SIGUSR1) &&
                                               is_blocked(blocked_from_outside);
                  return as_at_the_start ? 0 : 1;
              }),
              exited(0));
}

TEST_F(SignalGate, a_process_that_is_stopped_goes_on_where_it_was) {
    const pid_t child = start_child([] {
        call_stoppable(SIGSTOP, [] { return raise(SIGSTOP); });
        return 7;
    });
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, WUNTRACED), child);
    EXPECT_TRUE(WIFSTOPPED(status));
    kill(child, SIGCONT);
    EXPECT_EQ(from_wait_status(wait_for_child(child)), exited(7));
}

}  // namespace
