#include "tools/bench/peers.h"

#include "tools/bench/find_program.h"
#include "tools/bench/measured_program.h"
#include "tools/bench/walk.h"

std::vector<Peer> peers_of(const std::string& wizard, const std::string& floor) {
    const std::string whiptail = find_program("whiptail");
    const std::string dialog = find_program("dialog");
    const std::string title = "Please enter admin's password";
    const std::string prompt = "Password:";
    const std::string rows = "13";
    const std::string cols = "45";
    return {
        {"wizard", {wizard}, {wizard}, true},
        {"whiptail",
         {whiptail, "--title", title, "--passwordbox", prompt, rows, cols},
         {whiptail, "--title", title, "--inputbox", prompt, rows, cols},
         false},
        {"dialog",
         {dialog, "--title", title, "--insecure", "--passwordbox", prompt, rows, cols},
         {dialog, "--title", title, "--inputbox", prompt, rows, cols},
         false},
        {"floor", {floor}, {floor}, false},
    };
}

void go_to_text_box(const Peer& peer, MeasuredProgram& program) {
    if (peer.is_wizard)
        walk(program, Stop::domain);
}

void go_to_dialog(const Peer& peer, MeasuredProgram& program) {
    if (!peer.is_wizard)
        return;
    program.type("\t\t\r");
    program.expect("Error!");
}
