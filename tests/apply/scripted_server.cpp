#include "tests/apply/scripted_server.h"

#include <cstdio>

#include "apply/server_session.h"
#include "tests/support/files.h"
#include "wizard/base/host_facts.h"

namespace {

template <size_t size>
void set_path(char (&field)[size], const std::string& path) {
    ASSERT_LT(path.size(), size);
    std::snprintf(field, size, "%s", path.c_str());
}

}  // namespace

ScriptedServer::ScriptedServer() {
    InstallProfile& profile = install_profiles[os_kind];
    set_path(profile.config_file, directory / config);
    set_path(profile.pid_file, directory / pid_file);
    set_path(profile.server_binary, directory / "teluma");
    profile.admin_password[0] = '\0';
    script("");
}

ScriptedServer::~ScriptedServer() {
    server_session = {};
    install_profiles[os_kind] = {};
}

void ScriptedServer::script(const std::string& commands) {
    write_file("teluma",
               "#!/bin/sh\n"
               "{ printf 'called'; [ $# = 0 ] || printf ' [%s]' \"$@\"; echo; } >>calls\n" +
                   commands,
               0755);
}

std::string ScriptedServer::calls() { return exists("calls") ? read_file("calls") : ""; }
