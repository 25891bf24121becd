#pragma once

#include <string>
#include <vector>

/// A picture of one screen, or of one after the other.
struct Picture {
    std::string name;  // of its file, without the ending
    std::string svg;
};

/// Runs the wizard at `program` through the demonstration, in a terminal of 80 columns and 24 lines
/// that nobody sees, and draws each of its screens once it is filled in, what stands in the
/// terminal at the end, and the whole run as a moving picture. In a sandbox with its usual
/// interfaces and the stand-in server installed the pictures are the same every time. A wait in
/// vain throws what ends a test.
std::vector<Picture> draw_pictures(const std::string& program);
