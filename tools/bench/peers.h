#pragma once

#include <string>
#include <vector>

/// A program of the comparison, and how it is brought to each of the two boxes.
struct Peer {
    std::string name;
    std::vector<std::string> password_box;  ///< the command that shows it
    std::vector<std::string> text_box;
    std::string keys_to_text_box;  ///< typed before the text box is there
};

/// The wizard, then those that it is compared with, then the floor. The boxes have the size and the
/// texts of the wizard's first screen.
std::vector<Peer> peers_of(const std::string& wizard, const std::string& floor);

/// What is typed on the wizard's first screen to leave it forwards.
constexpr const char* leave_first_screen = "x\tx\t\r";
