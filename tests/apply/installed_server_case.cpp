#include "tests/apply/installed_server_case.h"

#include <csignal>

#include "apply/cli_session.h"
#include "apply/server_process.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/install_profile.h"

InstalledServerCase::InstalledServerCase() {
    std::signal(SIGPIPE, SIG_IGN);
    select_install_profile();
    discover_networks();
}

InstalledServerCase::~InstalledServerCase() {
    release_networks();
    server_pid = 0;
    cli_socket = -1;
}

void InstalledServerCase::logIn() {
    ASSERT_EQ(server_restart_with_password(password), 0);
    ASSERT_EQ(cli_login(), 0);
}
