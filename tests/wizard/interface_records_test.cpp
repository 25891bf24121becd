// Lists of interfaces as the kernels of several systems give them, byte by byte.

#include "wizard/base/interface_records.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/case_name.h"

namespace {

using Offsets = std::vector<std::size_t>;

constexpr InterfaceRecordLayout linux_64_bit = {40, 16, false};
constexpr InterfaceRecordLayout linux_32_bit = {32, 16, false};
constexpr InterfaceRecordLayout sun_os = {32, 16, false};
constexpr InterfaceRecordLayout free_bsd = {32, 16, true};  // and OpenBSD
constexpr InterfaceRecordLayout net_bsd = {144, 16, true};  // its ifreq holds any address

std::string padded(const std::string& text, std::size_t size) {
    return text + std::string(size > text.size() ? size - text.size() : 0, '\0');
}

// An address that begins with its length and family, as the BSDs have it, IPv4 unless told
// otherwise.
std::string bsd_address(int length, int family = 2) {
    const std::string head = {static_cast<char>(length), static_cast<char>(family)};
    return padded(head, static_cast<std::size_t>(length));
}

constexpr int link_family = 18;
constexpr int ipv6_family = 28;

// IPv4 addresses that begin with the family alone, in the order of a little and of a big machine.
const std::string little_address = padded({'\2', '\0'}, 16);
const std::string big_address = padded({'\0', '\2'}, 16);

struct List {
    const char* name;
    InterfaceRecordLayout layout;
    std::vector<std::string> addresses;
    std::size_t cut;  // how many bytes are missing at the end
    Offsets offsets;
};

const List lists[] = {
    {"of_no_records", linux_64_bit, {}, 0, {}},
    {"of_linux", linux_64_bit, {little_address, little_address, big_address}, 0, {0, 40, 80}},
    {"of_linux_with_32_bits", linux_32_bit, {little_address, little_address}, 0, {0, 32}},
    {"of_a_big_machine_running_sunos", sun_os, {big_address, big_address}, 0, {0, 32}},
    {"with_link_and_ipv6_addresses_on_freebsd_and_openbsd",
     free_bsd,
     {bsd_address(54, link_family), bsd_address(16), bsd_address(28, ipv6_family), bsd_address(16)},
     0,
     {0, 70, 102, 146}},
    {"with_addresses_shorter_than_a_plain_one",
     free_bsd,
     {bsd_address(6, link_family), bsd_address(0), bsd_address(16)},
     0,
     {0, 32, 64}},
    {"with_the_longest_address",
     free_bsd,
     {bsd_address(255, link_family), bsd_address(16)},
     0,
     {0, 271}},
    {"of_netbsd_whatever_the_addresses",
     net_bsd,
     {bsd_address(54, link_family), bsd_address(28, ipv6_family), bsd_address(16)},
     0,
     {0, 144, 288}},
    {"cut_in_the_second_record", free_bsd, {bsd_address(16), bsd_address(16)}, 1, {0}},
    {"cut_in_the_only_record", free_bsd, {bsd_address(16)}, 1, {}},
    {"cut_in_the_address", free_bsd, {bsd_address(54, link_family)}, 30, {0}},
};

class InterfaceRecords : public testing::TestWithParam<List> {};

TEST_P(InterfaceRecords, are_found_where_they_stand) {
    const InterfaceRecordLayout& layout = GetParam().layout;
    std::string list;
    for (const std::string& address : GetParam().addresses)
        list += padded(padded("eth0", layout.name_size) + address, layout.record_size);
    EXPECT_EQ(interface_record_offsets(list.data(), list.size() - GetParam().cut, layout),
              GetParam().offsets);
}

INSTANTIATE_TEST_SUITE_P(Lists, InterfaceRecords, testing::ValuesIn(lists), CaseName());

}  // namespace
