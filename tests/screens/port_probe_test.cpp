#include "wizard/system/port_probe.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>

#include <cerrno>

#include "tests/support/descriptor.h"
#include "tests/support/local_port.h"
#include "tests/support/waits.h"
#include "wizard/base/wizard_settings.h"

namespace {

/// A name that no resolver knows, and that is none to ask a name server for.
constexpr char no_host[] = "1.2.3.4.5";

class PortProbe : public testing::Test {
  protected:
    PortProbe() { wizard_settings = WizardSettings{}; }

    LocalPort port;
};

TEST_F(PortProbe, finds_a_port_taken_where_a_program_accepts_connections) {
    port.open();
    EXPECT_EQ(probe_port("127.0.0.1", port.number()), 0);
    EXPECT_EQ(probe_port("localhost", port.number()), 0) << "the name of a host";
    EXPECT_EQ(probe_port("127.0.0.1", 0x10000 + port.number()), 0) << "more than 16 bits";
}

TEST_F(PortProbe, finds_a_port_free_where_connections_are_refused_and_leaves_nothing_open) {
    const long before = open_descriptors();
    EXPECT_EQ(probe_port("127.0.0.1", port.number()), ECONNREFUSED);
    EXPECT_NE(probe_port("255.255.255.255", port.number()), 0) << "refused by this host, at once";
    EXPECT_EQ(open_descriptors(), before);
}

TEST_F(PortProbe, leaves_the_connection_open_when_the_port_is_taken) {
    port.open();
    ASSERT_EQ(probe_port("127.0.0.1", port.number()), 0);
    const Descriptor connection = port.takeConnection();
    ASSERT_NE(connection.get(), -1);
    char byte;
    EXPECT_EQ(recv(connection.get(), &byte, 1, 0), -1) << "it has been closed";
    EXPECT_EQ(errno, EAGAIN);
}

TEST_F(PortProbe, sleeps_before_it_connects) {
    port.open();
    Waits waits;
    waits.inSleep = [&] { EXPECT_EQ(port.takeConnection().get(), -1); };
    probe_port("127.0.0.1", port.number());
    EXPECT_EQ(waits.sleeps, std::vector<int>{0});
}

TEST_F(PortProbe, finds_a_port_free_for_want_of_a_socket) {
    port.open();
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    const rlimit none = {0, limit.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    const int result = probe_port("127.0.0.1", port.number());
    setrlimit(RLIMIT_NOFILE, &limit);
    EXPECT_EQ(result, EMFILE);
}

TEST_F(PortProbe, returns_errno_as_it_stands_for_an_unknown_host_and_leaves_nothing_open) {
    const long before = open_descriptors();
    errno = ENOENT;
    EXPECT_EQ(probe_port(no_host, port.number()), ENOENT);
    errno = 0;
    EXPECT_EQ(probe_port(no_host, port.number()), 0);
    EXPECT_EQ(open_descriptors(), before);
}

TEST_F(PortProbe, reports_a_port_once_found_free_as_free_without_asking_while_answers_are_applied) {
    ASSERT_NE(probe_port("127.0.0.1", port.number()), 0);
    port.open();
    wizard_settings.apply_running = 1;
    EXPECT_EQ(probe_port("127.0.0.1", port.number()), 1);
    EXPECT_EQ(probe_port("127.0.0.2", port.number()), 1) << "the address does not count";
    EXPECT_EQ(port.takeConnection().get(), -1) << "it has asked";
    wizard_settings.apply_running = 0;
    EXPECT_EQ(probe_port("127.0.0.1", port.number()), 0) << "it has not asked again";
}

TEST_F(PortProbe, asks_for_a_port_never_found_free_also_while_answers_are_applied) {
    port.open();
    wizard_settings.apply_running = 1;
    for (int times = 0; times < 2; ++times) EXPECT_EQ(probe_port("127.0.0.1", port.number()), 0);
    port.close();
    EXPECT_EQ(probe_port("127.0.0.1", port.number()), ECONNREFUSED);
    EXPECT_EQ(probe_port("127.0.0.1", port.number()), 1);
}

TEST_F(PortProbe, an_unknown_host_does_not_mark_the_port_as_found_free) {
    port.open();
    errno = ENOENT;
    ASSERT_NE(probe_port(no_host, port.number()), 0);
    wizard_settings.apply_running = 1;
    EXPECT_EQ(probe_port("127.0.0.1", port.number()), 0);
}

TEST(AllDigits, is_true_of_digits_only) {
    for (const char* text : {"0", "0123456789", "99999999999999999999"})
        EXPECT_TRUE(is_all_digits(text)) << text;
    for (const char* text : {"", "-1", "+1", " 1", "1 ", "1a", "a1", "1.0", "/", ":", "1\xb2"})
        EXPECT_FALSE(is_all_digits(text)) << text;
}

}  // namespace
