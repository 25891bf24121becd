// Lists of interfaces as the kernels of several systems give them, byte by byte.

#include "wizard/base/interface_records.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Offsets = std::vector<std::size_t>;

constexpr InterfaceRecordLayout linux_64_bit = {40, 16, false};
constexpr InterfaceRecordLayout linux_32_bit = {32, 16, false};
constexpr InterfaceRecordLayout sun_os = {32, 16, false};
constexpr InterfaceRecordLayout free_bsd = {32, 16, true};  // and OpenBSD
constexpr InterfaceRecordLayout net_bsd = {144, 16, true};  // its ifreq holds any address

constexpr int bsd_af_inet = 2;
constexpr int bsd_af_link = 18;
constexpr int bsd_af_inet6 = 28;

std::string padded(const std::string& text, std::size_t size) {
    return text + std::string(size > text.size() ? size - text.size() : 0, '\0');
}

// An address that begins with its length and family, as the BSDs have it.
std::string bsd_address(int length, int family) {
    const std::string head = {static_cast<char>(length), static_cast<char>(family)};
    return padded(head, static_cast<std::size_t>(length));
}

// An IPv4 address that begins with the family alone, in the order of a little machine.
std::string plain_address() {
    return padded({'\2', '\0'}, 16);
}

std::string record(const std::string& name, const std::string& address,
                   const InterfaceRecordLayout& layout) {
    return padded(padded(name, layout.name_size) + address, layout.record_size);
}

Offsets offsets_in(const std::string& list, const InterfaceRecordLayout& layout) {
    return interface_record_offsets(list.data(), list.size(), layout);
}

TEST(InterfaceRecords, stand_at_equal_distances_on_linux) {
    for (const InterfaceRecordLayout& layout : {linux_64_bit, linux_32_bit}) {
        const std::string list = record("lo", plain_address(), layout) +
                                 record("eth0", plain_address(), layout) +
                                 record("eth1", plain_address(), layout);
        EXPECT_EQ(offsets_in(list, layout),
                  (Offsets{0, layout.record_size, 2 * layout.record_size}));
    }
}

TEST(InterfaceRecords, of_a_big_machine_running_sunos_have_no_length_in_the_family) {
    const std::string list =
        record("lo0", padded({'\0', '\2'}, 16), sun_os) + record("net0", plain_address(), sun_os);
    EXPECT_EQ(offsets_in(list, sun_os), (Offsets{0, 32}));
}

TEST(InterfaceRecords, with_link_and_ipv6_addresses_are_longer_on_freebsd_and_openbsd) {
    const std::string list = record("em0", bsd_address(54, bsd_af_link), free_bsd) +
                             record("em0", bsd_address(16, bsd_af_inet), free_bsd) +
                             record("em0", bsd_address(28, bsd_af_inet6), free_bsd) +
                             record("lo0", bsd_address(16, bsd_af_inet), free_bsd);
    EXPECT_EQ(offsets_in(list, free_bsd), (Offsets{0, 70, 102, 146}));
    EXPECT_EQ(list.substr(70, 3), "em0");
    EXPECT_EQ(list.substr(146, 3), "lo0");
}

TEST(InterfaceRecords, with_an_address_shorter_than_a_plain_one_take_a_whole_record) {
    const std::string list = record("tun0", bsd_address(6, bsd_af_link), free_bsd) +
                             record("lo0", bsd_address(0, bsd_af_inet), free_bsd) +
                             record("em0", bsd_address(16, bsd_af_inet), free_bsd);
    EXPECT_EQ(offsets_in(list, free_bsd), (Offsets{0, 32, 64}));
}

TEST(InterfaceRecords, stand_at_equal_distances_on_netbsd_whatever_their_addresses) {
    const std::string list = record("wm0", bsd_address(54, bsd_af_link), net_bsd) +
                             record("wm0", bsd_address(28, bsd_af_inet6), net_bsd) +
                             record("wm0", bsd_address(16, bsd_af_inet), net_bsd);
    EXPECT_EQ(offsets_in(list, net_bsd), (Offsets{0, 144, 288}));
}

TEST(InterfaceRecords, with_the_longest_address_are_passed_over_whole) {
    const std::string list = record("odd0", bsd_address(255, bsd_af_link), free_bsd) +
                             record("lo0", bsd_address(16, bsd_af_inet), free_bsd);
    EXPECT_EQ(offsets_in(list, free_bsd), (Offsets{0, 271}));
}

TEST(InterfaceRecords, that_are_cut_at_the_end_of_the_list_are_left_out) {
    const std::string whole = record("lo0", bsd_address(16, bsd_af_inet), free_bsd);
    EXPECT_EQ(offsets_in(whole + whole.substr(0, 31), free_bsd), (Offsets{0}));
    EXPECT_EQ(offsets_in(whole.substr(0, 31), free_bsd), Offsets{});
    const std::string link = record("em0", bsd_address(54, bsd_af_link), free_bsd);
    EXPECT_EQ(offsets_in(link.substr(0, 40), free_bsd), (Offsets{0}));
}

TEST(InterfaceRecords, are_none_in_an_empty_list) {
    EXPECT_EQ(offsets_in("", linux_64_bit), Offsets{});
    EXPECT_EQ(offsets_in("", net_bsd), Offsets{});
}

}  // namespace
