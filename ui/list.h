#pragma once

#include <string>
#include <vector>

#include "ui/window.h"

/// What the two kinds of list share: a column of texts, one a line, with a bar on one of them. It
/// is as high as it has entries and does not scroll.
class ListBase : public Window {
  public:
    /// Puts the cursor after the entry under the bar.
    void placeCursor() override { wmove(cursesWindow, selected, maxLength + 1); }

    /// Moves the bar on the up and down keys, and draws.
    int onKey(int key) override;

  protected:
    /// `normalPair` and `selectedPair` are the colour pairs of an entry and of the one under the
    /// bar, which stand after markers of `markerWidth` columns.
    ListBase(Window* parent, int count, const char* const* texts, int row, int col, int normal_pair,
             int selected_pair, int marker_width);

    /// Draws entry `index` after `marker`; the bar is as long as the longest entry.
    void drawEntry(int index, const char* marker);

    int selected = 0;  ///< the entry under the bar
    int count;
    int maxLength = 0;  ///< of the entries; 0 where there is none

  private:
    std::vector<std::string> items;
    int normalPair;
    int selectedPair;
};

/// A list of which one entry is selected.
class List : public ListBase {
  public:
    List(Window* parent, int count, const char* const* items, int row, int col, int normal_pair,
         int selected_pair)
        : ListBase(parent, count, items, row, col, normal_pair, selected_pair, 2) {}

    int getSelected() const { return selected; }

    /// Selects entry `index` without drawing; an index that is none is ignored.
    void setSelected(int index);

    void draw() override;
};

/// The most entries a ChoiceList shows; further ones are left out.
constexpr int max_choices = 100;

/// A list with a check box before each entry.
class ChoiceList : public ListBase {
  public:
    /// `checked` holds a flag (0 or 1) for each of the `count` texts; null for all off.
    ChoiceList(Window* parent, int count, const char* const* items, const unsigned char* checked,
               int row, int col, int normal_pair, int selected_pair);

    /// The flags in the order of the entries, malloc'ed, their number in *count; the caller frees
    /// them.
    unsigned char* getChecked(int* flag_count) const;

    /// As in every list; space and Enter invert the entry under the bar, and draw.
    int onKey(int key) override;

    /// Draws and hides the terminal's cursor.
    void draw() override;

  private:
    unsigned char checked[max_choices] = {};
};
