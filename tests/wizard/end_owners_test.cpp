// The users at both ends of real connections, and of those in tables as the kernel prints them on
// this machine.

#include "wizard/system/end_owners.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <string>

#include "tests/support/local_port.h"
#include "tests/support/process.h"

namespace {

sockaddr_in end_at(const char* address, int port) {
    sockaddr_in end{};
    end.sin_family = AF_INET;
    end.sin_port = htons(static_cast<in_port_t>(port));
    inet_pton(AF_INET, address, &end.sin_addr);
    return end;
}

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
    const sockaddr_in address = end_at("192.168.7.9", 9091);
    ASSERT_EQ(connect(client.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address),
              0);
    EXPECT_EQ(found(), EndOwners::unlistable);
}

TEST_F(FindEndOwners, are_not_listed_without_a_table) {
    const std::string tables = "/proc/" + std::to_string(getpid()) + "/net";
    ASSERT_EQ(run_command({"mount", "-n", "-t", "tmpfs", "none", tables}).status, exited(0));
    EXPECT_EQ(found(), EndOwners::unlistable);
}

const sockaddr_in server = end_at("127.0.0.1", 9091);
const sockaddr_in wizard = end_at("127.0.0.1", 40000);

std::string word(uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "%08X", number);
    return text;
}

const std::string loopback = word(htonl(INADDR_LOOPBACK));
const std::string server_end = loopback + ":2383";
const std::string wizard_end = loopback + ":9C40";
const std::string prefix = word(0) + word(0) + word(htonl(0xffff));

constexpr const char* head =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout "
    "inode\n";

std::string row(const std::string& own, const std::string& remote, uid_t user) {
    return "   4: " + own + " " + remote + " 01 00000000:00000011 00:00000000 00000000  " +
           std::to_string(user) + "        0 72 1 0000000000000000 20 4 30 10 -1\n";
}

constexpr uid_t nobody = 4711;

uid_t owner_in(std::string table) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
        fmemopen(table.data(), table.size(), "r"), std::fclose);
    uid_t owner = nobody;
    const bool found = find_owner(file.get(), server, wizard, owner);
    EXPECT_EQ(found, owner != nobody);
    return owner;
}

TEST(FindOwner, tells_the_user_of_the_row_with_both_addresses) {
    EXPECT_EQ(owner_in(head + row(wizard_end, server_end, 0) + row(server_end, wizard_end, 999)),
              999U);
    EXPECT_EQ(owner_in(head + row(server_end, wizard_end, 4294967294U)), 4294967294U);
    EXPECT_EQ(owner_in(head + row(prefix + server_end, prefix + wizard_end, 12)), 12U);
}

TEST(FindOwner, does_not_take_another_row) {
    EXPECT_EQ(
        owner_in(head + row(server_end, word(0) + ":0000", 0) +
                 row(server_end, loopback + ":9C41", 0) + row(word(0) + ":2383", wizard_end, 0) +
                 row(word(1) + word(0) + word(0) + server_end, prefix + wizard_end, 0)),
        nobody);
}

TEST(FindOwner, does_not_mind_what_is_no_row) {
    EXPECT_EQ(owner_in("\n" + std::string(600, 'x') + "\n" + server_end + " " + wizard_end + "\n" +
                       row(server_end, wizard_end, 12)),
              12U);
    EXPECT_EQ(owner_in("x"), nobody);
}

}  // namespace
