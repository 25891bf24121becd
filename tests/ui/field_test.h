#pragma once

#include <string>

#include "tests/ui/ui_test.h"
#include "ui/text_field.h"
#include "wizard/base/heap_text.h"

/// A field of class `Field` that takes 8 characters and shows 5 of them.
template <class Field>
class FieldTest : public UiTest {
  protected:
    FieldTest() : field(root(), 2, 3, 8, 5, 1) {
        field.setColors(2, 2, 1);
        field.draw();
    }

    void typeIn(const std::string& characters) {
        for (const char character : characters)
            field.onKey(static_cast<unsigned char>(character));
    }

    std::string text() const { return HeapText(field.getText()).get(); }

    /// What the field's curses window holds.
    std::string line() const { return line_of(field.getCursesWindow(), 0); }

    int cursorColumn() const { return cursor_in(field.getCursesWindow()).col; }

    Field field;
};
