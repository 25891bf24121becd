#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "screens/screen.h"
#include "screens/screen_table.h"
#include "ui/list.h"
#include "ui/message_dialogs.h"
#include "ui/terminal/colours.h"
#include "ui/text_field.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/listeners.h"
#include "wizard/system/port_probe.h"

namespace {

enum Focus { focus_list, focus_port, focus_ok, focus_back };

constexpr int list_row = 4;
constexpr int port_digits = 5;
constexpr int highest_port = 65535;

const Listener& listener_of(int state) {
    return *std::find_if(std::begin(listeners), std::end(listeners),
                         [state](const Listener& listener) { return listener.state == state; });
}

int longest(char (interf_addr::*text)[256]) {
    size_t length = 0;
    for (int i = 0; i < interface_count; ++i)
        length = std::max(length, std::strlen(interface_table[i].*text));
    return static_cast<int>(length);
}

// "NAME : ADDRESS" of each interface, both parts padded to the longest.
std::vector<std::string> interface_rows() {
    const int name_width = longest(&interf_addr::name);
    const int address_width = longest(&interf_addr::address);
    std::vector<std::string> rows;
    for (int i = 0; i < interface_count; ++i) {
        char row[sizeof(interf_addr)];
        std::snprintf(row, sizeof(row), "%-*s : %-*s", name_width, interface_table[i].name,
                      address_width, interface_table[i].address);
        rows.emplace_back(row);
    }
    return rows;
}

// WebAdmin takes its answers as they are given: the interface when the bar moves, the port when
// "OK" is pressed. The others take both when they are accepted, the interface also when "OK" is
// pressed.
class ListenerScreen : public Screen {
  public:
    // `rows` are those of the interfaces, all of the same length.
    ListenerScreen(int state, const std::vector<std::string>& rows)
        : Screen(state, interface_count + 9, std::max(lengthOf(rows) + 13, 27),
                 interface_count + 9),
          listener(listener_of(state)) {
        const int port_col = lengthOf(rows) + 5;
        std::vector<const char*> texts;
        for (const std::string& row : rows) texts.push_back(row.c_str());
        add<Label>(&frame, 3, 1, "Interface:");
        add<Label>(&frame, 3, port_col, "Port:");
        list =
            &add<List>(&frame, interface_count, texts.data(), list_row, 1, pair_screen, pair_focus);
        for (int row = 0; row < interface_count; ++row) {
            ports.push_back(
                &add<TextField>(&frame, list_row + row, port_col, port_digits, port_digits, 1));
            ports.back()->setText(listener.default_port);
        }
        addControl({focus_list, list, Enter::moves_on});
        addControl({focus_port, ports.front(), Enter::moves_on});
        addButton(focus_ok, interface_count + 5, frameCols - 8, "OK");
        addButton(focus_back, interface_count + 5, 2, "Back");
    }

  private:
    static int lengthOf(const std::vector<std::string>& rows) {
        return static_cast<int>(rows.front().size());
    }

    bool isWebadmin() const { return &listener == &webadmin_listener; }
    int& chosenInterface() { return wizard_settings.*listener.interface_index; }
    int& chosenPort() { return wizard_settings.*listener.port; }
    const interf_addr& interfaceUnderBar() const { return interface_table[list->getSelected()]; }
    TextField& portUnderBar() { return *ports[static_cast<size_t>(list->getSelected())]; }

    // The port field of the row under the bar is the one that gets the keyboard.
    void followBar() {
        controlOf(focus_port).widget = &portUnderBar();
        if (isWebadmin()) chosenInterface() = list->getSelected();
    }

    void prepare() override {
        list->setSelected(chosenInterface());
        followBar();
    }

    void takeKey(const Control& control, int key) override {
        Screen::takeKey(control, key);
        followBar();
    }

    WizardEnd press(int button) override {
        if (button == focus_ok)
            check();
        else
            leave(previous_screen_state(state), isWebadmin() ? state_aliases : state_smtp);
        return WizardEnd::not_yet;
    }

    // The port that is typed, -1 for a text that is no port.
    int typedPort() {
        const HeapText text(portUnderBar().getText());
        if (!is_all_digits(text.get())) return -1;
        const int port = std::atoi(text.get());
        if (isWebadmin()) chosenPort() = port;
        return port > highest_port ? -1 : port;
    }

    void check() {
        chosenInterface() = list->getSelected();
        const int port = typedPort();
        if (port == -1) {
            refuse("The port must be a valid number in [0-65535] range!", focus_port);
            return;
        }
        hide();
        if (!probe_port_visibly(interfaceUnderBar().address, port)) {
            warnOfTakenPort(port);
        } else if (!loopbackIsMeant()) {
            screen_focus(state) = focus_list;
        } else {
            chosenPort() = port;
            goOn();
        }
    }

    bool loopbackIsMeant() {
        if (std::strncmp(interfaceUnderBar().name, "lo", 2) != 0) return true;
        const std::string question =
            std::string("Selecting 127.0.0.1 will enable access to ") + listener.gives_access_to +
            "\tonly from this machine and not remotely from other machines. Are you sure?";
        return askYesNo(question.c_str(), "WARNING!") == 1;
    }

    // The port is in use: the user stops the program that uses it, and the loopback question is not
    // asked then; or chooses another port.
    void warnOfTakenPort(int port) {
        const char* address = interfaceUnderBar().address;
        char message[512] = {};
        std::snprintf(
            message, sizeof(message),
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
            screen_focus(state) = focus_port;
            return;
        }
        if (!isWebadmin()) screen_focus(state_services) = 0;
        goOn();
    }

    void goOn() { leave(next_screen_state(state), state_smtp); }

    const Listener& listener;
    List* list = nullptr;
    std::vector<TextField*> ports;
};

}  // namespace

std::unique_ptr<Screen> listener_screen_build(int state) {
    return std::make_unique<ListenerScreen>(state, interface_rows());
}
