#pragma once

#include <curses.h>

#include <string>
#include <vector>

/// What the two kinds of list share: their entries and how one is drawn.

/// Copies of `count` texts.
std::vector<std::string> copy_entries(const char* const* items, int count);

/// The length of the longest entry, 0 where there is none.
int longest_entry(const std::vector<std::string>& entries);

/// Draws `marker` and, behind it, `text` filled up with blanks to `length` characters on line `row`
/// of `window`. Colours and weight are the window's present ones.
void draw_list_entry(WINDOW* window, int row, const char* marker, const std::string& text,
                     int length);

/// Moves `bar` by one on the up and down keys, within 0 to count - 1. Returns true when it moved.
bool move_list_bar(int& bar, int count, int key);
