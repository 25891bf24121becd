#include "wizard/base/install_profile.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

// The admin_password is a placeholder, replaced by what is typed before anybody logs in.
constexpr InstallProfile shipped_profiles[os_kind_count] = {
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
    std::copy(std::begin(shipped_profiles), std::end(shipped_profiles), install_profiles);
    return detect_os();
}

char* profile_doc_dir() {
    return install_profiles[os_kind].doc_dir;
}

char* profile_domains_dir() {
    return strdup(install_profiles[os_kind].domains_dir);
}
