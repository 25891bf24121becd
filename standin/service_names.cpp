#include "service_names.h"

#include <algorithm>
#include <array>

namespace standin {

namespace {
const std::array<const char*, 3> services_without_listeners = {"log", "processing", "smtpOutgoing"};
}  // namespace

const std::vector<ServiceName>& listener_services() {
    static const std::vector<ServiceName> names = {
        {"smtp-incoming", "smtpIncoming"},
        {"pop3", "pop3"},
        {"imap", "imap"},
        {"webmail", "webmail"},
        {"webadmin", "webadmin"},
        {"cli", "cli"},
    };
    return names;
}

std::string service_of_section(const std::string& config_name) {
    for (const ServiceName& name : listener_services()) {
        if (config_name == name.config) {
            return name.command;
        }
    }
    return {};
}

bool is_listener_service(const std::string& command_name) {
    const auto& names = listener_services();
    return std::any_of(names.begin(), names.end(),
                       [&](const ServiceName& name) { return command_name == name.command; });
}

bool is_service(const std::string& name) {
    return !service_of_section(name).empty() ||
           std::find(services_without_listeners.begin(), services_without_listeners.end(), name) !=
               services_without_listeners.end();
}

}  // namespace standin
