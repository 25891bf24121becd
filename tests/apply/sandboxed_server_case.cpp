#include "tests/apply/sandboxed_server_case.h"

#include <csignal>

#include "apply/cli_session.h"
#include "apply/server_process.h"
#include "wizard/host_facts.h"
#include "wizard/install_profile.h"

SandboxedServerCase::SandboxedServerCase() {
    std::signal(SIGPIPE, SIG_IGN);
    select_install_profile();
    discover_networks();
}

SandboxedServerCase::~SandboxedServerCase() {
    release_networks();
    server_pid = 0;
    cli_socket = -1;
}

void SandboxedServerCase::logIn() {
    ASSERT_EQ(server_restart_with_password(password), 0);
    ASSERT_EQ(cli_login(), 0);
}
