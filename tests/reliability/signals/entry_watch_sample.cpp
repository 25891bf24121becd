// A program that lets an interrupt in where it must not.

#include <curses.h>

#include <csignal>

int main() {
    std::signal(SIGINT, [](int) {});
    if (newterm(nullptr, stdout, stdin) == nullptr) return 1;
    endwin();
}
