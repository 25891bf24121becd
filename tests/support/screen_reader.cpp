#include "tests/support/screen_reader.h"

#include <poll.h>

#include <csignal>

namespace {

/// Starts a thread in which every signal is blocked.
template <class Work>
std::thread quiet_thread(Work work) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread started(work);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return started;
}

}  // namespace

ScreenReader::ScreenReader(Pty& read_pty, int rows, int cols, const std::string& term)
    : pty(read_pty),
      emulator(rows, cols, term),
      stop(make_pipe()),
      thread(quiet_thread([this] { readUntilStopped(); })) {}

ScreenReader::~ScreenReader() {
    stop.write_end.close();
    thread.join();
}

void ScreenReader::readUntilStopped() {
    pollfd waited[] = {{pty.descriptor(), POLLIN, 0}, {stop.read_end.get(), POLLIN, 0}};
    while (waited[1].revents == 0) {
        poll(waited, 2, -1);
        lockAndAbsorb();
    }
}

std::unique_lock<std::mutex> ScreenReader::lockAndAbsorb() {
    std::unique_lock<std::mutex> lock(mutex);
    const std::string news = pty.read();
    output += news;
    emulator.feed(news);
    pty.write(emulator.takeReplies());
    return lock;
}

ScreenImage ScreenReader::image() {
    const auto lock = lockAndAbsorb();
    return emulator.image();
}

std::string ScreenReader::bytes() {
    const auto lock = lockAndAbsorb();
    return output;
}

bool ScreenReader::alternateScreen() {
    const auto lock = lockAndAbsorb();
    return emulator.alternateScreen();
}

std::string ScreenReader::keyBytes(Key key) {
    const auto lock = lockAndAbsorb();
    return emulator.keyBytes(key);
}

void ScreenReader::resize(int rows, int cols) {
    const auto lock = lockAndAbsorb();
    emulator.resize(rows, cols);
    pty.resize(rows, cols);
}
