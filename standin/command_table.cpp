#include "command_table.h"

#include <map>

#include "text.h"

namespace {

const unsigned logged_in = root_context | server_context | service_context | sslcontrol_context |
                           create_context | domain_context | account_context;
const unsigned committable = logged_in & ~(root_context | sslcontrol_context);

// clang-format off
const Command command_table[] = {
    {login_context | root_context,  "user %",                      open_login,             Move::enter,   password_context},
    {logged_in,                     "back",                        just_move,              Move::discard, {}},
    {committable,                   "commit",                      just_move,              Move::keep,    {}},
    {root_context | server_context, "save config",                 save_config,            Move::stay,    {}},

    {root_context,       "create domain name % domainlocation % postmasterpasswd %...",
                                                                   create_domain,          Move::enter,   create_context},
    {root_context,       "update domain name %",                   open_domain,            Move::enter,   domain_context},
    {domain_context,     "add alias %",                            add_domain_alias,       Move::stay,    {}},

    {domain_context,     "update account name %",                  open_account,           Move::enter,   account_context},
    {account_context,    "add alias %",                            add_account_alias,      Move::stay,    {}},

    {root_context,       "config server",                          just_move,              Move::enter,   server_context},
    {server_context,     "set primarydomain %",                    set_primary_domain,     Move::stay,    {}},
    {server_context,     "show attr services",                     show_services,          Move::stay,    {}},
    {server_context,     "show attr smtpfiltersfile",              show_smtp_filters_file, Move::stay,    {}},
    {server_context,     "set services %...",                      set_services,           Move::stay,    {}},

    {server_context,     "config %",                               open_service,           Move::enter,   service_context},
    {service_context,    "list listeners",                         list_listeners,         Move::stay,    {}},
    {service_context,    "remove listener address %",              remove_listener,        Move::stay,    {}},
    {service_context,    "add listener address %",                 add_listener,           Move::stay,    {}},
    {service_context,    "set enable %",                           set_enable,             Move::stay,    {}},

    {service_context,    "config sslcontrol",                      just_move,              Move::enter,   sslcontrol_context},
    {sslcontrol_context, "set certfile %",                         set_certfile,           Move::stay,    {}},
    {sslcontrol_context, "done",                                   just_move,              Move::keep,    {}},
};
// clang-format on

/// How far a line fits a row of the table.
enum class Fit { no, command_only, whole };

Fit fit(const std::string& form, const std::string& line, std::vector<std::string>& arguments) {
    const std::vector<std::string> wanted = split_words(form);
    const std::vector<std::string> words = split_words(line);
    Fit failure = Fit::no;
    for (std::size_t index = 0; index < wanted.size(); ++index) {
        if (wanted[index][0] == '%') failure = Fit::command_only;
        if (index >= words.size()) return failure;
        if (wanted[index] == "%...") {
            arguments.push_back(rest_from_word(line, index));
            return Fit::whole;
        }
        if (wanted[index] == "%") {
            arguments.push_back(words[index]);
        } else if (wanted[index] != words[index]) {
            return failure;
        }
    }
    return words.size() == wanted.size() ? Fit::whole : Fit::command_only;
}

}  // namespace

const char* prompt_of(Context context) {
    static const std::map<Context, const char*> prompts = {
        {login_context, "login> "},
        {password_context, "password> "},
        {root_context, "teluma> "},
        {server_context, "teluma/server> "},
        {service_context, "teluma/server/service> "},
        {sslcontrol_context, "teluma/server/service/sslcontrol> "},
        {create_context, "teluma/new-domain> "},
        {domain_context, "teluma/domain> "},
        {account_context, "teluma/domain/account> "},
    };
    return prompts.at(context);
}

Match find_command(Context context, const std::string& line) {
    if (has_control_characters(line)) return {nullptr, {}, "malformed command"};
    bool known = false;
    for (const Command& command : command_table) {
        std::vector<std::string> arguments;
        const Fit how = fit(command.form, line, arguments);
        const bool valid_here = (command.contexts & context) != 0;
        if (valid_here && how == Fit::whole) return {&command, arguments, nullptr};
        if (valid_here && how == Fit::command_only) return {nullptr, {}, "malformed arguments"};
        known = known || how != Fit::no;
    }
    if (context == login_context) return {nullptr, {}, "not logged in"};
    return {nullptr, {}, known ? "wrong context" : "unknown command"};
}
