#include "wizard/base/host_facts.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "wizard/base/install_profile.h"

interf_addr* interface_table = nullptr;
int interface_count = 0;
relay_network* relay_network_list = nullptr;
int relay_network_count = 0;
char readme_path[256];
char* others_doc_path = nullptr;

namespace {

interf_addr* all_interfaces_only() {
    auto* table = static_cast<interf_addr*>(std::calloc(interface_table_size, sizeof(interf_addr)));
    std::snprintf(table[0].name, sizeof(table[0].name), "all");
    std::snprintf(table[0].address, sizeof(table[0].address), "0.0.0.0");
    return table;
}

// Gives back what a table has behind its last entry, 20 kB on most hosts, and keeps the empty entry
// that ends it.
void drop_spare_entries(interf_addr*& table, int count) {
    const int kept = std::min(count + 1, interface_table_size);
    void* shorter = std::realloc(table, static_cast<std::size_t>(kept) * sizeof(interf_addr));
    if (shorter != nullptr)
        table = static_cast<interf_addr*>(shorter);
}

}  // namespace

void discover_networks() {
    interface_table = interfaces(&interface_count);
    if (interface_table == nullptr) {
        interface_table = all_interfaces_only();
        interface_count = 1;
    }
    drop_spare_entries(interface_table, interface_count);
    relay_network_list = relay_networks(&relay_network_count);
}

void form_document_paths() {
    others_doc_path = profile_doc_dir();
    const std::string directory = others_doc_path;
    std::snprintf(readme_path, sizeof(readme_path), "%sREADME", directory.c_str());
    std::snprintf(others_doc_path, sizeof(InstallProfile::doc_dir), "%sREMOVE-OTHERS.txt",
                  directory.c_str());
}

void release_networks() {
    std::free(interface_table);
    interface_table = nullptr;
    interface_count = 0;
    free_relay_networks(relay_network_list);
    relay_network_list = nullptr;
    relay_network_count = 0;
}
