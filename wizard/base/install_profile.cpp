#include "wizard/base/install_profile.h"

#include <cstdio>
#include <cstring>

#include "wizard/base/tel_help.h"

InstallProfile install_profiles[os_kind_count];

int os_kind = os_linux;

namespace {

// The texts of a row of `install_profiles`, in the order of its fields.
struct ShippedProfile {
    const char* config_file;
    const char* server_binary;
    const char* pid_file;
    const char* admin_password;  // a placeholder, replaced by what is typed before anybody logs in
    const char* domains_dir;
    const char* doc_dir;
};

const ShippedProfile shipped_profiles[os_kind_count] = {
    {"/var/opt/teluma/run/teluma.cfg", "/opt/teluma/bin/teluma", "/var/opt/teluma/run/teluma.pid",
     "unset1", "/var/opt/teluma/domains/", "/opt/teluma/share/doc/"},
    {"/var/teluma/run/teluma.cfg", "/usr/local/teluma/bin/teluma", "/var/teluma/run/teluma.pid",
     "unset2", "/var/teluma/domains/", "/usr/local/teluma/share/doc/"},
    {"/var/teluma/run/teluma.cfg", "/usr/pkg/teluma/bin/teluma", "/var/teluma/run/teluma.pid",
     "unset-34", "/var/teluma/domains/", "/usr/pkg/teluma/share/doc/"},
    {"/var/teluma/run/teluma.cfg", "/usr/local/teluma/bin/teluma", "/var/teluma/run/teluma.pid",
     "unset-34", "/var/teluma/domains/", "/usr/local/teluma/share/doc/"},
    // The blank behind the SunOS executable is part of the row: the path only ever stands at the
    // front of a shell command.
    {"/var/opt/teluma/run/teluma.cfg", "/opt/teluma/bin/teluma ", "/var/opt/teluma/run/teluma.pid",
     "unset1", "/var/opt/teluma/domains/", "/opt/teluma/share/doc/"},
};

void fill_field(char (&field)[256], const char* text) {
    std::snprintf(field, sizeof(field), "%s", text);
}

void fill_profile(InstallProfile& profile, const ShippedProfile& shipped) {
    fill_field(profile.config_file, shipped.config_file);
    fill_field(profile.server_binary, shipped.server_binary);
    fill_field(profile.pid_file, shipped.pid_file);
    fill_field(profile.admin_password, shipped.admin_password);
    fill_field(profile.domains_dir, shipped.domains_dir);
    fill_field(profile.doc_dir, shipped.doc_dir);
}

}  // namespace

int select_install_profile() {
    for (int kind = 0; kind < os_kind_count; ++kind)
        fill_profile(install_profiles[kind], shipped_profiles[kind]);
    return detect_os();
}

char* profile_doc_dir() {
    return install_profiles[os_kind].doc_dir;
}

char* profile_domains_dir() {
    return strdup(install_profiles[os_kind].domains_dir);
}
