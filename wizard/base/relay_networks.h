#pragma once

/// One network whose hosts may be allowed to relay mail.
struct relay_network {
    char* network;  ///< dotted decimal, malloc'ed; null ends a list
    char* netmask;  ///< dotted decimal, malloc'ed
    int covered;    ///< 1 while a list is built: inside or equal to another network, to be dropped
};

/// Records of a relay network list: at most 39 networks and the null record.
constexpr int relay_list_size = 40;

/// The host's distinct IPv4 networks in the order of its interfaces. A network is left out when an
/// earlier interface's is the same one, or when a later one's contains it, judged by whole zero
/// octets. Stores their number in *count. Returns a list that ends in a null record, to be released
/// with free_relay_networks().
relay_network* relay_networks(int* count);

/// Releases a list of relay_networks() and its texts; null is allowed.
void free_relay_networks(relay_network* list);

/// The characters of `dotted` from `position` up to the next "." or the end, at most four of them,
/// in a new 5-byte zero-filled buffer that the caller frees; empty when position is past the end.
char* octet_at(const char* dotted, int position);
