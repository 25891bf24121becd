#pragma once

#include <string>
#include <vector>

#include "ui/window.h"

/// A column of texts, one a line, with a bar that selects one. It is as high as it has entries and
/// does not scroll.
class List : public Window {
  public:
    /// Keeps copies of the `count` texts. `normalPair` and `selectedPair` are the colour pairs of
    /// an entry and of the one under the bar.
    List(Window* parent, int count, const char* const* items, int row, int col, int normalPair,
         int selectedPair);

    int getSelected() const { return selected; }

    /// Selects entry `index` without drawing; an index that is none is ignored.
    void setSelected(int index);

    /// Puts the cursor behind the entry under the bar.
    void placeCursor() override;

    /// Moves the bar on the up and down keys, and draws. Returns the key.
    int onKey(int key) override;

    void draw() override;

  private:
    void drawEntry(int index);

    int selected = 0;
    int maxLength;
    int normalPair;
    int selectedPair;
    std::vector<std::string> items;
    int count;
};
