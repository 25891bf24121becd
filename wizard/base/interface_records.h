#pragma once

#include <cstddef>
#include <vector>

/// How a system lays out its list of network interfaces, the answer to SIOCGIFCONF: one record
/// after the other, each with an interface's name and, after it, a socket address.
struct InterfaceRecordLayout {
    std::size_t record_size;  ///< sizeof(struct ifreq), the least that a record takes
    std::size_t name_size;    ///< of the name in front of the address
    /// The address begins with a byte that gives its length, and a record whose address has no room
    /// in a struct ifreq is longer. Otherwise all records have the same length.
    bool address_has_length;
};

/// Where the records stand in the `length` bytes of such a list: the offset of each that has all of
/// its first `record_size` bytes there, in order. They need not be aligned.
std::vector<std::size_t> interface_record_offsets(const char* records, std::size_t length,
                                                  const InterfaceRecordLayout& layout);
