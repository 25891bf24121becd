#pragma once

#include <string>
#include <vector>

class MeasuredProgram;

/// A program of the comparison, and how it is brought to each of the two boxes.
struct Peer {
    std::string name;                       ///< its column
    std::vector<std::string> password_box;  ///< the command that shows it
    std::vector<std::string> text_box;      ///< the command that shows it, or what comes before it
    bool is_wizard;
};

/// The wizard, then those that it is compared with, then the floor; the paths of the wizard and the
/// floor are given. The boxes have the size and the texts of the wizard's first screen. Throws
/// std::runtime_error if a program is not installed.
std::vector<Peer> peers_of(const std::string& wizard, const std::string& floor);

/// From the first screen of `text_box` to the text box: the wizard's is on its second screen.
void go_to_text_box(const Peer& peer, MeasuredProgram& program);

/// From the first screen of `password_box` to an open dialog: of the wizard, the one that says that
/// there is no blank password; for the others the box is one.
void go_to_dialog(const Peer& peer, MeasuredProgram& program);
