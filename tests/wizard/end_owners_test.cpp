// The users at both ends of real connections.

#include "wizard/system/end_owners.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

#include "tests/support/local_port.h"
#include "tests/support/process.h"

namespace {

class FindEndOwners : public testing::Test {
  protected:
    FindEndOwners() {
        port.open();
        client = connection_to(port.number());
    }

    EndOwners found() { return find_end_owners(client.get(), own, peer); }

    LocalPort port;
    Descriptor client;
    uid_t own = 4711;
    uid_t peer = 4711;
};

TEST_F(FindEndOwners, waits_for_somebody_to_accept_the_connection) {
    EXPECT_EQ(found(), EndOwners::missing);
    const Descriptor accepted = port.takeConnection();
    EXPECT_EQ(found(), EndOwners::known);
    EXPECT_EQ(own, getuid());
    EXPECT_EQ(peer, getuid());
}

TEST_F(FindEndOwners, does_not_know_an_end_that_is_closed_or_not_connected) {
    port.takeConnection().close();
    EXPECT_EQ(found(), EndOwners::missing);
    client = Descriptor(socket(AF_INET, SOCK_STREAM, 0));
    EXPECT_EQ(found(), EndOwners::missing);
}

TEST_F(FindEndOwners, are_not_listed_for_another_host) {
    client = Descriptor(socket(AF_INET, SOCK_DGRAM, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(9091);
    inet_pton(AF_INET, "192.168.7.9", &address.sin_addr);
    ASSERT_EQ(connect(client.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address),
              0);
    EXPECT_EQ(found(), EndOwners::unlistable);
}

TEST_F(FindEndOwners, are_not_listed_without_a_table) {
    const std::string tables = "/proc/" + std::to_string(getpid()) + "/net";
    ASSERT_EQ(run_command({"mount", "-n", "-t", "tmpfs", "none", tables}).status, exited(0));
    EXPECT_EQ(found(), EndOwners::unlistable);
}

}  // namespace
