#include "wizard/base/relay_networks.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "wizard/base/heap_text.h"
#include "wizard/base/tel_help.h"

namespace {

char* network_text(const char* text) {
    constexpr std::size_t size = 50;
    auto* copy = static_cast<char*>(std::malloc(size));
    std::snprintf(copy, size, "%s", text);
    return copy;
}

relay_network network_of(const interf_addr& entry) {
    in_addr network{};
    network.s_addr = inet_addr(entry.netmask) & inet_addr(entry.address);
    return {network_text(inet_ntoa(network)), network_text(entry.netmask), 0};
}

// True when `wider` has an octet "0" at the first place where the two texts differ and they agree
// on the first octet: 192.168.0.0 holds 192.168.1.0. A last octet is not looked at.
bool network_holds(const char* wider, const char* narrower) {
    const int last = static_cast<int>(std::strlen(wider)) - 1;
    int position = 0;
    while (position < last) {
        const HeapText wider_octet(octet_at(wider, position));
        const HeapText octet(octet_at(narrower, position));
        if (std::strcmp(wider_octet.get(), octet.get()) != 0)
            return position > 0 && std::strcmp(wider_octet.get(), "0") == 0;
        position += static_cast<int>(std::strlen(octet.get())) + 1;
    }
    return false;
}

// Marks what `latest` makes superfluous among the records before it, or itself where an earlier
// record is the same network. Only a later network can drop an earlier one.
void mark_covered(relay_network* earlier, relay_network& latest) {
    for (relay_network* record = earlier; record != &latest; ++record) {
        if (std::strcmp(record->network, latest.network) == 0)
            latest.covered = 1;
        else if (std::strcmp(record->netmask, latest.netmask) != 0 &&
                 network_holds(latest.network, record->network))
            record->covered = 1;
    }
}

void free_texts(relay_network& record) {
    std::free(record.network);
    std::free(record.netmask);
}

}  // namespace

relay_network* relay_networks(int* count) {
    static_assert(interface_table_size <= relay_list_size, "a list has room for every interface");
    auto* list = static_cast<relay_network*>(std::calloc(relay_list_size, sizeof(relay_network)));
    relay_network* end = list;
    int entries = 0;
    const std::unique_ptr<interf_addr, FreeHeap> table(interfaces(&entries));
    for (int i = 1; i < entries; ++i, ++end) {
        *end = network_of(table.get()[i]);
        mark_covered(list, *end);
    }
    const auto is_kept = [](const relay_network& record) { return record.covered == 0; };
    relay_network* const dropped = std::stable_partition(list, end, is_kept);
    std::for_each(dropped, end, free_texts);
    std::fill(dropped, end, relay_network{});
    *count = static_cast<int>(dropped - list);
    return list;
}

void free_relay_networks(relay_network* list) {
    for (relay_network* record = list; record != nullptr && record->network != nullptr; ++record)
        free_texts(*record);
    std::free(list);
}

char* octet_at(const char* dotted, int position) {
    constexpr std::size_t octet_size = 5;
    auto* octet = static_cast<char*>(std::calloc(octet_size, 1));
    const std::string text = dotted;
    const auto from = std::min(static_cast<std::size_t>(position), text.size());
    text.copy(octet, std::min(text.find('.', from) - from, octet_size - 1), from);
    return octet;
}
