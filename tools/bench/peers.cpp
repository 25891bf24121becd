#include "tools/bench/peers.h"

std::vector<Peer> peers_of(const std::string& wizard, const std::string& floor) {
    const std::string title = "Please enter admin's password";
    const std::string prompt = "Password:";
    const std::string rows = "13";
    const std::string cols = "45";
    return {
        {"wizard", {wizard}, {wizard}, leave_first_screen},
        {"whiptail",
         {"whiptail", "--title", title, "--passwordbox", prompt, rows, cols},
         {"whiptail", "--title", title, "--inputbox", prompt, rows, cols},
         ""},
        {"dialog",
         {"dialog", "--title", title, "--insecure", "--passwordbox", prompt, rows, cols},
         {"dialog", "--title", title, "--inputbox", prompt, rows, cols},
         ""},
        {"floor", {floor}, {floor}, ""},
    };
}
