#pragma once

#include <string>
#include <vector>

#include "ui/window.h"

/// The most entries a ChoiceList shows; further ones are left out.
constexpr int max_choices = 100;

/// A column of texts, one a line, each with a check box that can be on or off.
class ChoiceList : public Window {
  public:
    /// Keeps copies of the `count` texts and their flags (0 or 1; null for all off). `normalPair`
    /// and `selectedPair` are the colour pairs of an entry and of the one under the bar.
    ChoiceList(Window* parent, int count, const char* const* items, const unsigned char* checked,
               int row, int col, int normalPair, int selectedPair);

    /// The flags in the order of the entries, malloc'ed, their number in *count; the caller frees
    /// them.
    unsigned char* getChecked(int* count) const;

    /// Puts the cursor behind the text under the bar.
    void placeCursor() override;

    /// Inverts the entry under the bar on space and Enter, moves the bar on the up and down keys,
    /// and draws. Returns the key.
    int onKey(int key) override;

    /// Draws and hides the terminal's cursor.
    void draw() override;

  private:
    void drawEntry(int index);

    int cursor = 0;
    int maxLength;
    int normalPair;
    int selectedPair;
    std::vector<std::string> items;
    unsigned char checked[max_choices] = {};
    int count;
};
