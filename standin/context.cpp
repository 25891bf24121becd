#include "context.h"

namespace standin {

const char* prompt_of(Context context) {
    switch (context) {
        case login_context:
            return "login> ";
        case password_context:
            return "password> ";
        case root_context:
            return "teluma> ";
        case server_context:
            return "teluma/server> ";
        case service_context:
            return "teluma/server/service> ";
        case sslcontrol_context:
            return "teluma/server/service/sslcontrol> ";
        case create_context:
            return "teluma/new-domain> ";
        case domain_context:
            return "teluma/domain> ";
        case account_context:
            return "teluma/domain/account> ";
    }
    return "> ";
}

}  // namespace standin
