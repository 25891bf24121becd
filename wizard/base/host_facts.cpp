#include "wizard/base/host_facts.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <utility>

namespace {

// By OsKind, the fields in their order. Nobody logs in with the passwords: what is typed takes
// their place before. As records they would be two pages of memory more.
const char* const shipped_profiles[os_kind_count][6] = {
    {"/var/opt/teluma/run/teluma.cfg", "/opt/teluma/bin/teluma", "/var/opt/teluma/run/teluma.pid",
     "unset1", "/var/opt/teluma/domains/", "/opt/teluma/share/doc/"},
    {"/var/teluma/run/teluma.cfg", "/usr/local/teluma/bin/teluma", "/var/teluma/run/teluma.pid",
     "unset2", "/var/teluma/domains/", "/usr/local/teluma/share/doc/"},
    {"/var/teluma/run/teluma.cfg", "/usr/pkg/teluma/bin/teluma", "/var/teluma/run/teluma.pid",
     "unset-34", "/var/teluma/domains/", "/usr/pkg/teluma/share/doc/"},
    {"/var/teluma/run/teluma.cfg", "/usr/local/teluma/bin/teluma", "/var/teluma/run/teluma.pid",
     "unset-34", "/var/teluma/domains/", "/usr/local/teluma/share/doc/"},
    // The space at the end of the SunOS executable is part of the row: the path only ever stands at
    // the front of a shell command.
    {"/var/opt/teluma/run/teluma.cfg", "/opt/teluma/bin/teluma ", "/var/opt/teluma/run/teluma.pid",
     "unset1", "/var/opt/teluma/domains/", "/opt/teluma/share/doc/"},
};

void form_document_paths() {
    others_doc_path = profile_doc_dir();
    std::snprintf(readme_path, sizeof(readme_path), "%sREADME", others_doc_path);
    const std::size_t end = std::strlen(others_doc_path);
    std::snprintf(others_doc_path + end, sizeof(InstallProfile::doc_dir) - end,
                  "REMOVE-OTHERS.txt");
}

}  // namespace

void discover_host() {
    interface_table = interfaces(&interface_count);
    if (interface_table == nullptr) {
        interface_table = new_interface_table();
        interface_count = 1;
    }
    relay_network_list = relay_networks(&relay_network_count);
    select_install_profile();
    form_document_paths();
}

void release_networks() {
    std::free(std::exchange(interface_table, nullptr));
    interface_count = 0;
    free_relay_networks(std::exchange(relay_network_list, nullptr));
    relay_network_count = 0;
}

int select_install_profile() {
    constexpr char(InstallProfile::*fields[])[256] = {
        &InstallProfile::config_file,    &InstallProfile::server_binary, &InstallProfile::pid_file,
        &InstallProfile::admin_password, &InstallProfile::domains_dir,   &InstallProfile::doc_dir};
    for (int kind = 0; kind < os_kind_count; ++kind) {
        for (std::size_t i = 0; i < std::size(fields); ++i)
            std::snprintf(install_profiles[kind].*fields[i], sizeof(InstallProfile::doc_dir), "%s",
                          shipped_profiles[kind][i]);
    }
    return detect_os();
}

char* profile_doc_dir() { return install_profiles[os_kind].doc_dir; }

char* profile_domains_dir() { return strdup(install_profiles[os_kind].domains_dir); }
