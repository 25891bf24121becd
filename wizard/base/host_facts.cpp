#include "wizard/base/host_facts.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "wizard/base/install_profile.h"

void discover_networks() {
    interface_table = interfaces(&interface_count);
    if (interface_table == nullptr) {
        interface_table = new_interface_table();
        interface_count = 1;
    }
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
