#pragma once

struct Size {
    int rows;
    int cols;
};

/// The smallest terminal there may be, the usual one and a large one.
constexpr Size terminal_sizes[] = {{20, 72}, {24, 80}, {60, 200}};

/// Resizes from the usual size that lead from each of these sizes to each other, in both
/// directions, and back to the usual one.
constexpr Size resize_round[] = {{20, 72}, {60, 200}, {20, 72}, {24, 80}, {60, 200}, {24, 80}};
