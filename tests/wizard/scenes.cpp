#include "tests/wizard/scenes.h"

#include <algorithm>
#include <iterator>
#include <ostream>

#include "apply/progress_list.h"
#include "screens/screen_table.h"
#include "ui/keys.h"
#include "ui/message_dialogs.h"
#include "ui/window.h"
#include "wizard/base/screen_state.h"

namespace {

struct ScreenFacts {
    const char* name;
    int state;
    int controls;
    int way_out;       // the control, counted in TAB order, on which Enter leaves the screen
    const char* then;  // what is to be typed after that Enter
};

// The password screen is left by "Next", with an error box, as its other button ends the program.
const ScreenFacts screens[] = {
    {"password", state_password, 4, 2, "\n"}, {"domain", state_domain, 5, 4, ""},
    {"aliases", state_aliases, 3, 2, ""},     {"webadmin", state_webadmin, 4, 3, ""},
    {"smtp", state_smtp, 4, 3, ""},           {"services", state_services, 3, 2, ""},
    {"pop3", state_pop3, 4, 3, ""},           {"imap", state_imap, 4, 3, ""},
    {"webmail", state_webmail, 4, 3, ""},     {"relay", state_relay, 3, 2, ""},
    {"sendmail", state_sendmail, 3, 2, ""},
};

std::string tabs(int count) {
    return std::string(static_cast<size_t>(count), '\t');
}

Scene scene_of(const ScreenFacts& screen, int control) {
    const int to_way_out = (screen.way_out - control + screen.controls) % screen.controls;
    const auto run = [screen] {
        screen_state = screen.state;
        screen_focus(screen.state) = 0;
        screen_table[screen.state]();
    };
    return {std::string(screen.name) + "_control_" + std::to_string(control), screen.state, run,
            tabs(control), tabs(to_way_out) + "\n" + screen.then};
}

const char question[] =
    "Selecting 127.0.0.1 will enable access to SMTP service \tonly from this machine and not "
    "remotely from other machines. Are you sure?";

void ask_yes_no() {
    askYesNo(question, "WARNING!");
}

void ask_retry_or_back() {
    askRetryOrBack(
        "There is already an application that binds the 25 port on the selected "
        "interface 0.0.0.0. Please stop that application.",
        "Warning!", "127.0.0.1", 0);
}

// A pending box takes no keys; something else goes on while it stands. Here that is a wait for one.
void stand() {
    read_key(*pending_frame());
}

void show_pending() {
    showPending("Please wait until the port is being checked!", "Operation pending!");
    stand();
    closePending();
}

void show_pending_that_needs_several_lines() {
    showPending(std::string(250, 'm').c_str(), "Operation pending!");
    stand();
    closePending();
}

void open_progress() {
    showApplyPending("Please wait until the changes are applied!", "Operations pending");
    progress_show_all();
    progress_add("pass", "--> setting admin password");
    progress_done("pass");
    progress_add("login", "--> connecting to CLI");
}

void close_progress() {
    progress_hide_all();
    closePending();
}

void show_progress() {
    open_progress();
    stand();
    close_progress();
}

void wait_for_ok() {
    open_progress();
    progress_wait_for_ok();
    close_progress();
}

}  // namespace

std::vector<Scene> screen_scenes() {
    std::vector<Scene> scenes;
    for (const ScreenFacts& screen : screens) {
        for (int control = 0; control < screen.controls; ++control)
            scenes.push_back(scene_of(screen, control));
    }
    return scenes;
}

std::vector<Scene> first_screen_scenes() {
    std::vector<Scene> scenes;
    for (const ScreenFacts& screen : screens)
        scenes.push_back(scene_of(screen, 0));
    return scenes;
}

std::vector<Scene> dialog_scenes() {
    return {
        {"message", state_message, [] { showMessage("Passwords do not match!", "Error!"); }, "",
         "\n"},
        {"no", state_yes_no, ask_yes_no, "", "\n"},
        {"yes", state_yes_no, ask_yes_no, "\t", "\n"},
        {"retry", state_retry_back, ask_retry_or_back, "", "\t\n"},
        {"back", state_retry_back, ask_retry_or_back, "\t", "\n"},
        {"pending", state_pending, show_pending, "", "x"},
        {"long_pending", state_pending, show_pending_that_needs_several_lines, "", "x"},
        {"progress", state_pending, show_progress, "", "x"},
        {"progress_ok", state_pending, wait_for_ok, "", "\n"},
    };
}

Scene screen_scene(const std::string& name, int control) {
    const auto* screen = std::find_if(std::begin(screens), std::end(screens),
                                      [&](const ScreenFacts& facts) { return facts.name == name; });
    return scene_of(*screen, control);
}

Scene dialog_scene(const std::string& name) {
    const std::vector<Scene> scenes = dialog_scenes();
    return *std::find_if(scenes.begin(), scenes.end(),
                         [&](const Scene& scene) { return scene.name == name; });
}

void PrintTo(const Scene& scene, std::ostream* out) {
    *out << scene.name;
}
