#include "tests/support/silent_port.h"

SilentPort::SilentPort(int number) : port(number) {
    constexpr int room_for_one = 0;
    port.open("0.0.0.0", room_for_one);
    first_caller = connection_to(number);
}
