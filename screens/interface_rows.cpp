#include "screens/interface_rows.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "wizard/base/host_facts.h"

namespace {

struct Widths {
    int name;
    int address;
};

Widths longest() {
    Widths widths{0, 0};
    for (int i = 0; i < interface_count; ++i) {
        const interf_addr& entry = interface_table[i];
        widths.name = std::max(widths.name, static_cast<int>(std::strlen(entry.name)));
        widths.address = std::max(widths.address, static_cast<int>(std::strlen(entry.address)));
    }
    return widths;
}

}  // namespace

int interface_text_width() {
    const Widths widths = longest();
    return widths.name + widths.address;
}

std::vector<std::string> interface_rows() {
    const Widths widths = longest();
    std::vector<std::string> rows;
    for (int i = 0; i < interface_count; ++i) {
        char row[sizeof(interf_addr)];
        std::snprintf(row, sizeof(row), "%-*s : %-*s", widths.name, interface_table[i].name,
                      widths.address, interface_table[i].address);
        rows.emplace_back(row);
    }
    return rows;
}

bool is_loopback_row(const std::string& row) {
    return row.compare(0, 2, "lo") == 0;
}
