#include "screens/listener_screen.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "screens/interface_rows.h"
#include "screens/listeners.h"
#include "ui/label.h"
#include "ui/list.h"
#include "ui/message_dialogs.h"
#include "ui/pending_box.h"
#include "ui/terminal/colours.h"
#include "ui/text_field.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/screen_moves.h"
#include "wizard/base/screen_state.h"
#include "wizard/system/port_probe.h"

Screen webadmin_screen{state_webadmin};
Screen service_screen{state_smtp};

namespace {

enum Focus { focus_list, focus_port, focus_ok, focus_back };

constexpr int list_row = 4;
constexpr int max_port_digits = 5;
constexpr int highest_port = 65535;

List* webadmin_list;
List* service_list;

// For each listener, one field per interface.
std::vector<TextField*> port_fields[listener_count];

bool is_webadmin() {
    return screen_state == state_webadmin;
}

Screen& current_screen() {
    return is_webadmin() ? webadmin_screen : service_screen;
}

List& current_list() {
    return is_webadmin() ? *webadmin_list : *service_list;
}

const Listener& current_listener() {
    return listeners[listener_index(screen_state)];
}

int& chosen_interface() {
    return wizard_settings.*current_listener().interface_index;
}

TextField* current_port_field() {
    const auto row = static_cast<size_t>(current_list().getSelected());
    return port_fields[listener_index(screen_state)][row];
}

// The port field of the row under the bar is the one that gets the keyboard.
void follow_bar() {
    Control& port = current_screen().controls[focus_port];
    port.field = current_port_field();
    port.widget = port.field;
    if (current_listener().takes_answers_at_once)
        chosen_interface() = current_list().getSelected();
}

void key_to_list(Window* /*widget*/, int key) {
    current_list().onKey(key);
    follow_bar();
}

void go_on() {
    screen_focus(state_smtp) = focus_list;
    screen_state = next_screen_state(screen_state);
}

// The port is in use: the user stops the program that uses it, and the loopback question is not
// asked then; or chooses another port.
void warn_of_taken_port(const char* address, int port) {
    char message[512] = {};
    std::snprintf(message, sizeof(message),
                  "There is already an application that binds the %d port on the selected "
                  "interface %s. Please stop that application and remove it from the automatic "
                  "startup daemons at boot. More information about stopping common applications "
                  "can be found in the %s document.",
                  port, address, others_doc_path);
    int answer = 0;
    do {
        answer = askRetryOrBack(message, "Warning!", address, port);
    } while (answer == -1);
    if (answer == 0) {
        screen_focus(screen_state) = focus_port;
        return;
    }
    if (!is_webadmin())
        screen_focus(state_services) = 0;
    go_on();
}

bool port_is_free(const char* address, int port) {
    showPending("Please wait until the port is being checked!", "Operation pending!");
    const bool is_free = probe_port(address, port) != 0;
    closePending();
    return is_free;
}

bool loopback_is_meant() {
    const std::string row = interface_rows()[static_cast<size_t>(current_list().getSelected())];
    return !is_loopback_row(row) || askYesNo(current_listener().loopback_question, "WARNING!") == 1;
}

// The port that is typed, -1 for a text that is no port.
int typed_port() {
    const HeapText text(current_port_field()->getText());
    if (!is_all_digits(text.get()))
        return -1;
    const int port = std::atoi(text.get());
    if (current_listener().takes_answers_at_once)
        wizard_settings.*current_listener().port = port;
    return port > highest_port ? -1 : port;
}

void press_ok() {
    chosen_interface() = current_list().getSelected();
    const int port = typed_port();
    if (port == -1) {
        screen_error(current_screen(), "The port must be a valid number in [0-65535] range!",
                     focus_port);
        return;
    }
    screen_hide(current_screen());
    const char* address = interface_table[chosen_interface()].address;
    if (!port_is_free(address, port)) {
        warn_of_taken_port(address, port);
    } else if (!loopback_is_meant()) {
        screen_focus(screen_state) = focus_list;
    } else {
        wizard_settings.*current_listener().port = port;
        go_on();
    }
}

void press_back() {
    screen_focus(is_webadmin() ? state_aliases : state_smtp) = 0;
    screen_state = previous_screen_state(screen_state);
}

void add_port_fields(Screen& screen, const Listener& listener, int count, int col) {
    std::vector<TextField*>& fields = port_fields[listener_index(listener.state)];
    fields.clear();
    for (int row = 0; row < count; ++row) {
        auto* field = new TextField(screen.frame.get(), list_row + row, col, max_port_digits,
                                    max_port_digits, 1);
        fields.push_back(screen_add(screen, field, listener.state));
        field->setText(listener.default_port);
    }
}

// Builds a screen for the listeners from `first` up to, but without, `end`.
List* build(Screen& screen, const Listener* first, const Listener* end) {
    constexpr int narrowest = 27;
    const std::vector<std::string> rows = interface_rows();
    const int count = static_cast<int>(rows.size());
    const int port_col = interface_text_width() + 8;
    const int cols = std::max(port_col + 8, narrowest);
    screen_open(screen, count + 9, cols, count + 9, first->title);
    Window* frame = screen.frame.get();
    screen_add(screen, new Label(frame, 3, 1, "Interface:"));
    screen_add(screen, new Label(frame, 3, port_col, "Port:"));
    auto* list = screen_add(screen, new List(frame, count, text_pointers(rows).data(), list_row, 1,
                                             pair_screen, pair_focus));
    for (const Listener* listener = first; listener != end; ++listener)
        add_port_fields(screen, *listener, count, port_col);
    add_list_control(screen, focus_list, list, key_to_list);
    // Which port field it is follows the bar.
    add_field_control(screen, focus_port, nullptr, nullptr);
    screen_add_button(screen, focus_ok, count + 5, cols - 8, "OK", press_ok);
    screen_add_button(screen, focus_back, count + 5, 2, "Back", press_back);
    return list;
}

void build_current_screen() {
    if (is_webadmin())
        webadmin_list = build(webadmin_screen, listeners, listeners + 1);
    else
        service_list = build(service_screen, listeners + 1, listeners + listener_count);
}

}  // namespace

void listener_screen_entry() {
    Screen& screen = current_screen();
    if (screen.frame == nullptr)
        build_current_screen();
    screen.frame->setTitle(current_listener().title, pair_screen);
    current_list().setSelected(chosen_interface());
    follow_bar();
    screen_draw(screen);
    screen_run(screen);
    screen_hide(screen);
}
