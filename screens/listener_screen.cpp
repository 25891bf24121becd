#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#include "screens/screen.h"
#include "screens/screen_table.h"
#include "ui/list.h"
#include "ui/message_dialogs.h"
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

// Makes all texts as long as the longest.
void pad(std::vector<std::string>& texts) {
    size_t longest = 0;
    for (const std::string& text : texts) longest = std::max(longest, text.size());
    for (std::string& text : texts) text.resize(longest, ' ');
}

// "NAME : ADDRESS" of each interface, both parts padded to the longest.
std::vector<std::string> interface_rows() {
    std::vector<std::string> rows;
    for (int i = 0; i < interface_count; ++i) rows.emplace_back(interface_table[i].name);
    pad(rows);
    for (size_t i = 0; i < rows.size(); ++i)
        rows[i] += std::string(" : ") + interface_table[i].address;
    pad(rows);
    return rows;
}

// WebAdmin takes its answers as they are given: the interface when the bar moves, the port when
// "OK" is pressed. The others take both when they are accepted, the interface also when "OK" is
// pressed.
class ListenerScreen : public Screen {
  public:
    // `rows` are those of the interfaces, each `row_cols` long.
    ListenerScreen(int state, const std::vector<std::string>& rows, int row_cols)
        : Screen(state, interface_count + 9, std::max(row_cols + 13, 27), interface_count + 9),
          listener(listener_of(state)) {
        const int port_col = row_cols + 5;
        std::vector<const char*> texts;
        for (const std::string& row : rows) texts.push_back(row.c_str());
        add<Label>(&frame, 3, 1, "Interface:");
        add<Label>(&frame, 3, port_col, "Port:");
        list =
            &add<List>(&frame, interface_count, texts.data(), list_row, 1, pair_screen, pair_focus);
        for (int row = list_row; row < list_row + interface_count; ++row) {
            ports.push_back(&add<TextField>(&frame, row, port_col, port_digits, port_digits, 1));
            ports.back()->setText(listener.default_port);
        }
        addControl({focus_list, list, Enter::moves_on});
        addControl({focus_port, ports.front(), Enter::moves_on});
        addButton(focus_ok, interface_count + 5, frameCols - 8, "OK");
        addButton(focus_back, interface_count + 5, 2, "Back");
    }

  private:
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

    void takeKey(const Control& control, int key) override {
        Screen::takeKey(control, key);
        followBar();
    }

    WizardEnd press(int button) override {
        if (button == focus_ok) return check();
        list->setSelected(chosenInterface());
        followBar();
        return goBack();
    }

    WizardEnd check() {
        chosenInterface() = list->getSelected();
        const HeapText text(portUnderBar().getText());
        const int port = is_all_digits(text.get()) ? std::atoi(text.get()) : -1;
        if (isWebadmin() && port != -1) chosenPort() = port;
        if (port == -1 || port > highest_port)
            return refuse("The port must be a valid number in [0-65535] range!", focus_port);
        hide();
        if (!probe_port_visibly(interfaceUnderBar().address, port)) return warnOfTakenPort(port);
        if (!loopbackIsMeant()) {
            screen_focus(state) = focus_list;
            return WizardEnd::not_yet;
        }
        chosenPort() = port;
        return goOn();
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
    WizardEnd warnOfTakenPort(int port) {
        const char* address = interfaceUnderBar().address;
        const std::string message =
            "There is already an application that binds the " + std::to_string(port) +
            " port on the selected interface " + address +
            ". Please stop that application and remove it from the automatic startup daemons at "
            "boot. More information about stopping common applications can be found in the " +
            others_doc_path + " document.";
        int answer = -1;
        while (answer == -1) answer = askRetryOrBack(message.c_str(), "Warning!", address, port);
        if (answer == 0) {
            screen_focus(state) = focus_port;
            return WizardEnd::not_yet;
        }
        if (!isWebadmin()) screen_focus(state_services) = 0;
        return goOn();
    }

    const Listener& listener;
    List* list = nullptr;
    std::vector<TextField*> ports;
};

}  // namespace

std::unique_ptr<Screen> listener_screen_build(int state) {
    const std::vector<std::string> rows = interface_rows();
    return std::make_unique<ListenerScreen>(state, rows, static_cast<int>(rows.front().size()));
}
