#pragma once

#include <string>
#include <vector>

namespace standin {

/// A service with listeners has two names: one for the command "config NAME" and one for the
/// section in teluma.cfg and the list of services.
struct ServiceName {
    const char* command;
    const char* config;
};

/// The services that have listeners.
const std::vector<ServiceName>& listener_services();

/// The command name of the listener service with the section `config_name`; empty when there is
/// none.
std::string service_of_section(const std::string& config_name);

/// True for the command name of a listener service.
bool is_listener_service(const std::string& command_name);

/// True for a name that may stand in the list of services: those of the listener services'
/// sections and of the services that have no listeners.
bool is_service(const std::string& name);

}  // namespace standin
