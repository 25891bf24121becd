#include "wizard/base/install_profile.h"

#include <cstdio>
#include <cstring>
#include <iterator>

namespace {

using Field = char (InstallProfile::*)[256];

constexpr Field fields[] = {
    &InstallProfile::config_file,    &InstallProfile::server_binary, &InstallProfile::pid_file,
    &InstallProfile::admin_password, &InstallProfile::domains_dir,   &InstallProfile::doc_dir,
};

// The texts of each row, in the order of the fields. The password is a placeholder, replaced by
// what is typed before anybody logs in.
const char* const shipped_texts[os_kind_count][std::size(fields)] = {
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

}  // namespace

int select_install_profile() {
    for (int kind = 0; kind < os_kind_count; ++kind) {
        for (std::size_t i = 0; i < std::size(fields); ++i)
            std::snprintf(install_profiles[kind].*fields[i], sizeof(InstallProfile::doc_dir), "%s",
                          shipped_texts[kind][i]);
    }
    return detect_os();
}

char* profile_doc_dir() { return install_profiles[os_kind].doc_dir; }

char* profile_domains_dir() { return strdup(install_profiles[os_kind].domains_dir); }
