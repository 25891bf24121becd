#include "tests/screens/walk_model.h"

#include <algorithm>
#include <cstdio>

namespace {

const std::map<int, std::vector<std::string>> entries = {
    {state_aliases,
     {"Redirect all mails for root account to postmaster",
      "Add the 'localhost' alias to this domain",
      "Add the 'localhost.localdomain' alias to this domain"}},
    {state_services, {"POP3", "IMAP", "WebMail"}},
    {state_relay, {"127.0.0.0/255.0.0.0", "192.168.1.0/255.255.255.0", "10.20.0.0/255.255.0.0"}}};
const char* const interface_texts[] = {"all  : 0.0.0.0  ", "lo   : 127.0.0.1", "eth0 : 127.0.0.2"};

struct FieldFacts {
    size_t longest;
    size_t visible;
    std::string label;
};

const std::map<std::string, FieldFacts> fields = {{"password", {50, 30, "Password:"}},
                                                  {"validate", {50, 30, "Validate:"}},
                                                  {"domain", {50, 39, "Primary Domain:"}},
                                                  {"location", {252, 38, "Domain Location:"}},
                                                  {"postmaster", {50, 26, "account password:"}}};

template <size_t size>
void store(char (&setting)[size], const std::string& text) {
    std::snprintf(setting, size, "%s", text.c_str());
}

std::vector<unsigned char*> flags_of(int state, WizardSettings& settings) {
    if (state == state_aliases)
        return {&settings.alias_root_to_postmaster, &settings.alias_localhost,
                &settings.alias_localhost_localdomain};
    unsigned char* first =
        state == state_services ? settings.service_enabled : settings.relay_ticks;
    return {first, first + 1, first + 2};
}

}  // namespace

WalkModel::WalkModel(int state) : screen(state) {
    ticks = {{state_services, {1, 1, 1}}, {state_relay, {1, 1, 1}}};
    for (const ListenerFacts& each : all_listeners()) {
        for (int row = 0; row < 3; ++row)
            texts[each.name + std::to_string(row)] = std::to_string(each.defaultPort());
    }
    leave(state, state);
}

const ControlFacts& WalkModel::control() {
    return *std::find_if(facts().controls.begin(), facts().controls.end(),
                         [this](const ControlFacts& each) { return each.focus == focus(screen); });
}

int WalkModel::tabsToNext() {
    const auto& controls = facts().controls;
    const auto first = std::find_if(controls.begin(), controls.end(),
                                    [](const ControlFacts& each) { return each.is_button; });
    const auto tabs = &*first - &control();
    return static_cast<int>(tabs < 0 ? tabs + facts().controlCount() : tabs);
}

const ListenerFacts& WalkModel::listener() const {
    return *std::find_if(all_listeners().begin(), all_listeners().end(),
                         [this](const ListenerFacts& each) { return each.state == screen; });
}

std::string* WalkModel::field() {
    if (dialog != 0 || control().is_button || control().name == "list") return nullptr;
    return control().name == "port" ? &port() : &texts[control().name];
}

void WalkModel::press(int key) {
    const bool is_list = control().name == "list";
    if (dialog != 0) {
        if (key == '\t') onSecondButton = !onSecondButton;
        if (key == '\n' || key == ' ') closeDialog();
    } else if (key == '\t' || (key == '\n' && (isListener() || !is_list) && !control().is_button)) {
        const bool is_last = &control() == &facts().controls.back();
        focus(screen) = is_last ? facts().controls.front().focus : (&control())[1].focus;
        followDomain();
    } else if (is_list) {
        pressInList(key);
    } else if (std::string* text = field()) {
        const size_t longest = isListener() ? 5 : fields.at(control().name).longest;
        locationIsEdited |= control().name == "location";
        if (key == model_erase)
            text->erase(std::max<size_t>(text->size(), 1) - 1);
        else if (key < model_up && text->size() < longest)
            *text += static_cast<char>(key);
    } else if (key == '\n' || key == ' ') {
        pressButton();
    }
}

void WalkModel::pressInList(int key) {
    int& bar = bars[screen];
    if (key == model_up || key == model_down)
        bar = std::clamp(bar + (key == model_up ? -1 : 1), 0, 2);
    else if (!isListener() && (key == '\n' || key == ' '))
        ticks[screen][static_cast<size_t>(bar)].flip();
    if (screen == state_webadmin) settings.webadmin_interface = bar;
}

void WalkModel::pressButton() {
    const bool forwards = tabsToNext() == 0;
    if (screen == state_sendmail && control().name != "back") {
        settings.sendmail_wrapper = control().name == "yes";
        ++applied;
        focus(screen) = 0;
        leave(apply_leads_to, apply_leads_to == state_aliases ? state_domain : apply_leads_to);
    } else if (forwards && screen == state_password) {
        checkPasswords();
    } else if (forwards && screen == state_domain) {
        checkDomain();
    } else if (forwards && isListener()) {
        checkPort();
    } else {
        const bool is_back_from_services = screen == state_services && !forwards;
        if (entries.count(screen) != 0 && !is_back_from_services) storeTicks();
        const int to = neighbour(forwards);
        leave(to, screen <= state_webadmin || is_back_from_services ? to : screen);
    }
}

void WalkModel::storeTicks() {
    for (size_t box = 0; box < 3; ++box) *flags_of(screen, settings)[box] = ticks[screen][box];
}

void WalkModel::checkPasswords() {
    if (texts["password"] != texts["validate"])
        return open(state_message, "Passwords do not match!", 0);
    store(settings.admin_password, texts["password"]);
    if (texts["password"].empty())
        return open(state_message, "A blank password is not allowed!", 0);
    leave(state_domain, state_domain);
}

void WalkModel::checkDomain() {
    if (texts["domain"].empty()) return open(state_message, "A blank domain is not allowed!", 0);
    if (texts["location"].empty())
        return open(state_message, "A blank domain location is not allowed!", 1);
    if (texts["postmaster"].empty())
        return open(state_message, "A blank password is not allowed!", 4);
    store(settings.primary_domain, texts["domain"]);
    store(settings.domain_location, texts["location"]);
    store(settings.postmaster_password, texts["postmaster"]);
    leave(state_aliases, state_aliases);
}

void WalkModel::checkPort() {
    const bool is_webadmin = screen == state_webadmin;
    settings.*listener().interface_index = bars[screen];
    const bool is_number = port().find_first_not_of("0123456789") == std::string::npos;
    typedPort = is_number && !port().empty() ? std::stoi(port()) : -1;
    if (is_webadmin && typedPort != -1) settings.webadmin_port = typedPort;
    if (typedPort < 0 || typedPort > 65535)
        return open(state_message, "The port must be a valid number in [0-65535] range!", 1);
    if (port_77_is_taken && typedPort == 77) return open(state_retry_back, "Warning!", 1);
    if (bars[screen] == 1) return open(state_yes_no, "WARNING!", 0);
    acceptPort();
}

void WalkModel::acceptPort() {
    settings.*listener().port = typedPort;
    leave(neighbour(true), state_smtp);
}

void WalkModel::closeDialog() {
    const int closed = dialog;
    dialog = 0;
    if (closed == state_yes_no && onSecondButton) return acceptPort();
    if (closed == state_retry_back && !onSecondButton) {
        if (port_77_is_taken) return open(state_retry_back, "Warning!", 1);
        if (screen != state_webadmin) focus(state_services) = 0;
        return leave(neighbour(true), state_smtp);
    }
    focus(screen) = focusAfterwards;
    show();
}

void WalkModel::open(int dialog_state, const std::string& text, int new_focus) {
    focusAfterwards = new_focus;
    dialog = dialog_state;
    dialogText = text;
    onSecondButton = false;
}

void WalkModel::leave(int to, int refocused) {
    screen = to;
    focus(refocused) = 0;
    if (screen == state_aliases) {
        bars[screen] = 0;
        ticks[screen].clear();
        for (const unsigned char* flag : flags_of(screen, settings))
            ticks[screen].push_back(*flag != 0);
    }
    show();
}

void WalkModel::show() {
    if (isListener()) bars[screen] = settings.*listener().interface_index;
    if (screen == state_relay) storeTicks();
    followDomain();
}

void WalkModel::followDomain() {
    if (screen != state_domain || locationIsEdited) return;
    texts["location"] = "/var/opt/teluma/domains/" + texts["domain"] + "/";
    store(settings.primary_domain, texts["location"]);
}

// By the services that are enabled: 6, 7 and 8 are POP3, IMAP and WebMail.
int WalkModel::neighbour(bool forwards) const {
    const int step = forwards ? 1 : -1;
    int to = screen + step;
    while (to >= state_pop3 && to <= state_webmail && !settings.service_enabled[to - state_pop3])
        to += step;
    return to;
}

std::vector<std::string> WalkModel::shown() {
    if (dialog != 0) return {dialogText};
    std::vector<std::string> lines = {facts().title};
    for (int row = 0; row < 3 && facts().controls.front().name == "list"; ++row) {
        const bool has_bar = bars[screen] == row;
        if (isListener())
            lines.push_back(std::string(has_bar ? "$ " : "  ") + interface_texts[row] + "  " +
                            texts[listener().name + std::to_string(row)] + " ");
        else
            lines.push_back((ticks[screen][static_cast<size_t>(row)] ? "[x] " : "[ ] ") +
                            entries.at(screen)[static_cast<size_t>(row)]);
    }
    for (const ControlFacts& each : facts().controls) {
        const auto found = fields.find(each.name);
        if (found == fields.end()) continue;
        const auto& [longest, visible, label] = found->second;
        const std::string& text = texts[each.name];
        const bool is_hidden = longest == 50 && visible != 39;
        lines.push_back(label +
                        (is_hidden ? std::string(std::min(text.size(), visible), '*')
                                   : text.substr(text.size() - std::min(text.size(), visible))) +
                        " ");
    }
    return lines;
}
