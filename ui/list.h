#pragma once

#include <string>
#include <vector>

#include "ui/window.h"

/// What the two kinds of list share: a column of texts, one a line, and a bar on one of them.
struct ListEntries {
    ListEntries(const char* const* texts, int count, int normal_pair, int selected_pair);

    /// Moves the bar by one on the up and down keys, unless it is at the end. Returns true when it
    /// moved.
    bool moveBar(int key);

    /// Draws entry `index` on its line of `window`: `marker` and the text, filled up to
    /// `maxLength`; bold in `selectedPair` under the bar, else in `normalPair`.
    void draw(WINDOW* window, int index, const char* marker) const;

    int selected = 0;   ///< the entry under the bar
    int maxLength = 0;  ///< the length of the longest entry, 0 where there is none
    int normalPair;
    int selectedPair;
    std::vector<std::string> items;
    int count;
};

/// A column of texts with a bar that selects one. It is as high as it has entries and does not
/// scroll.
class List : public Window {
  public:
    /// `normal_pair` and `selected_pair` are the colour pairs of an entry and of the one under the
    /// bar.
    List(Window* parent, int count, const char* const* items, int row, int col, int normal_pair,
         int selected_pair);

    int getSelected() const { return entries.selected; }

    /// Selects entry `index` without drawing; an index that is none is ignored.
    void setSelected(int index);

    /// Puts the cursor after the entry under the bar.
    void placeCursor() override;

    /// Moves the bar on the up and down keys, and draws.
    int onKey(int key) override;

    void draw() override;

  private:
    ListEntries entries;
};

/// The most entries a ChoiceList shows; further ones are left out.
constexpr int max_choices = 100;

/// A column of texts, one a line, each with a check box that can be on or off.
class ChoiceList : public Window {
  public:
    /// `checked` holds a flag (0 or 1) for each of the `count` texts; null for all off.
    /// `normal_pair` and `selected_pair` are the colour pairs of an entry and of the one under the
    /// bar.
    ChoiceList(Window* parent, int count, const char* const* items, const unsigned char* checked,
               int row, int col, int normal_pair, int selected_pair);

    /// The flags in the order of the entries, malloc'ed, their number in *count; the caller frees
    /// them.
    unsigned char* getChecked(int* count) const;

    /// Puts the cursor after the text under the bar.
    void placeCursor() override;

    /// Inverts the entry under the bar on space and Enter, moves the bar on the up and down keys,
    /// and draws.
    int onKey(int key) override;

    /// Draws and hides the terminal's cursor.
    void draw() override;

  private:
    ListEntries entries;
    unsigned char checked[max_choices] = {};
};
