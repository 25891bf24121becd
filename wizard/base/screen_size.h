#pragma once

/// The size of the terminal as measured last; -1 while there is no standard screen.
struct ScreenSize {
    int rows = -1;
    int cols = -1;
};

inline ScreenSize screen_size;
inline int& screen_rows = screen_size.rows;
inline int& screen_cols = screen_size.cols;

/// The smallest terminal that every screen fits into.
constexpr int min_screen_rows = 20;
constexpr int min_screen_cols = 72;

/// Where something `size` long starts to stand in the middle of `available`; 0 where it is longer,
/// so that its beginning is what shows.
constexpr int centred(int available, int size) {
    return size < available ? (available - size) / 2 : 0;
}
