#include "wizard/install_profile.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "wizard/tel_help.h"

InstallProfile install_profiles[os_kind_count];

int os_kind = os_linux;

namespace {

// The fourth text of each row is a placeholder: the password typed on the first screen replaces it
// before anybody logs in.
const InstallProfile shipped_profiles[os_kind_count] = {
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
