#include "tests/reliability/peer/whole_run.h"

#include <algorithm>
#include <numeric>

#include "tests/apply/step_commands.h"
#include "wizard/base/screen_state.h"

namespace {

std::vector<size_t> first_and_last_two(const Lines& commands) {
    return {0, commands.size() - 2, commands.size() - 1};
}

std::vector<size_t> all_of(const Lines& commands) {
    std::vector<size_t> places(commands.size());
    std::iota(places.begin(), places.end(), 0);
    return places;
}

TalkingStep service_step(const char* name, const std::string& port) {
    const Lines commands = listener_commands(name, "127.0.0.1:" + port, "0.0.0.0:" + port);
    return {name, commands, "Could not set services!", state_services,
            first_and_last_two(commands)};
}

}  // namespace

const std::vector<TalkingStep>& talking_steps() {
    // WebAdmin's step leaves the contexts of a failed attempt by itself.
    static const Lines webadmin = webadmin_commands("127.0.0.1:9000");
    static const Lines smtp = listener_commands("smtp-incoming", "127.0.0.1:25", "0.0.0.0:25");
    static const std::vector<TalkingStep> steps = {
        {"domain",
         domain_commands(),
         "Could not create the domain 'example.com'! Please make sure this domain doesn't already "
         "exist!",
         state_domain,
         {0}},
        {"aliases",
         alias_commands(),
         "Could not create the aliases! Please make sure that a similar alias does not already "
         "exist!",
         state_aliases,
         {0}},
        {"webadmin", webadmin, "Could not configure webadmin!", state_webadmin, all_of(webadmin)},
        {"smtp", smtp, "Could not configure SMTP!", state_smtp, first_and_last_two(smtp)},
        {"services",
         services_commands(" pop3 imap webmail"),
         "Could not set services!",
         state_services,
         {0, 4}},
        service_step("pop3", "110"),
        service_step("imap", "143"),
        service_step("webmail", "80"),
        {"relay", relay_commands(), "Could not configure relay!", state_relay, {0, 1}},
    };
    return steps;
}

PlacedCommand placed_command(size_t step, size_t index) {
    const std::vector<TalkingStep>& steps = talking_steps();
    const std::string text = steps[step].commands[index];
    Lines before = login_commands();
    for (size_t i = 0; i < step; ++i)
        before = joined_commands({before, steps[i].commands});
    for (size_t i = 0; i < index; ++i)
        before.push_back(steps[step].commands[i]);
    const auto earlier = std::count(before.begin(), before.end(), text);
    return {text, static_cast<int>(earlier) + 1, before};
}

Lines whole_run() {
    const PlacedCommand last =
        placed_command(talking_steps().size() - 1, talking_steps().back().commands.size() - 1);
    return joined_commands({last.before, {last.text}});
}
