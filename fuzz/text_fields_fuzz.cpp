// Whatever keys and texts a field gets, its text, its cursor and what it shows are the model's; and
// what the keys echo is what a fresh drawing shows.

#include <algorithm>
#include <cstdint>
#include <string>

#include "fuzz/target.h"
#include "fuzz/window_text.h"
#include "ui/text_field.h"
#include "wizard/base/heap_text.h"

namespace {

struct Measures {
    int max_length;
    int visible_width;
};

// A field that remembers and shows as TextField does; or, if it hides, as PassTextField, which
// draws stars over what stands there, counts its characters anew when it does, and does not end the
// text after a character that is typed.
class FieldModel {
  public:
    FieldModel(Measures measures, bool hides)
        : measures(measures),
          hides(hides),
          buffer(static_cast<std::size_t>(measures.max_length) + 1, '\0'),
          row(static_cast<std::size_t>(measures.visible_width) + 1, ' ') {}

    std::string text() const { return c_text(buffer); }
    const std::string& shown() const { return row; }
    int cursor() const { return std::min(length, measures.visible_width); }

    void draw() {
        if (!hides) return echo();
        length = static_cast<int>(text().size());
        star();
    }

    // What stands after a shorter text stays.
    void setText(const std::string& text) {
        buffer.resize(std::max(buffer.size(), text.size() + 1));
        buffer.replace(0, text.size() + 1, text + '\0');
        if (!hides) length = static_cast<int>(text.size());
    }

    void press(int key) {
        if (key == 8 || key == 127 || key == KEY_BACKSPACE)
            removeLast();
        else if (key >= ' ' && key < 127 && length < measures.max_length)
            append(static_cast<char>(key));
    }

  private:
    // The characters that stand in the field for the text's last ones, filled up with spaces.
    void echo() {
        const std::string all = text();
        const auto width = static_cast<std::size_t>(measures.visible_width);
        row = all.size() > width ? all.substr(all.size() - width) : all;
        row.resize(width + 1, ' ');
    }

    void star() { std::fill_n(row.begin(), cursor(), '*'); }

    void append(char character) {
        buffer[static_cast<std::size_t>(length++)] = character;
        if (!hides) {
            buffer[static_cast<std::size_t>(length)] = '\0';
            return echo();
        }
        star();
        if (length <= measures.visible_width) draw();
    }

    void removeLast() {
        if (length == 0) return;
        buffer[static_cast<std::size_t>(--length)] = '\0';
        if (!hides)
            echo();
        else if (length >= measures.visible_width)
            star();
        else
            row[static_cast<std::size_t>(length)] = ' ';
    }

    const Measures measures;
    const bool hides;
    std::string buffer;
    std::string row;
    int length = 0;
};

void require_same(TextField& field, const FieldModel& model) {
    const HeapText text(field.getText());
    require_equal(text.get(), model.text(), "the text is the model's");
    require_equal(row_text(field.getCursesWindow(), 0), model.shown(), "so is what is shown");
    field.placeCursor();
    require(getcurx(field.getCursesWindow()) == model.cursor(), "so is the cursor");
}

// Most keys are characters; some backspaces, some function keys and some new texts.
void use(TextField& field, FieldModel& model, FuzzInput& input) {
    const int kind = input.takeNumber(0, 15);
    if (kind == 0) {
        const std::string text =
            input.takePrintable(static_cast<std::size_t>(input.takeNumber(0, 70)));
        field.setText(text.c_str());
        model.setText(text);
    }
    if (kind <= 1) {
        field.draw();
        model.draw();
    } else {
        const int byte = input.takeNumber(0, 255);
        const int key = kind == 2 ? KEY_MIN + byte : kind == 3 ? KEY_BACKSPACE : byte;
        require(field.onKey(key) == key, "the key is returned");
        model.press(key);
    }
    require_same(field, model);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    need_curses();
    FuzzInput input(data, size);
    const bool hides = input.takeNumber(0, 1) == 1;
    const Measures measures{input.takeNumber(1, 60), input.takeNumber(1, 40)};
    FieldModel model(measures, hides);
    TextField plain(nullptr, 1, 1, measures.max_length, measures.visible_width, 1);
    PassTextField hidden(nullptr, 1, 1, measures.max_length, measures.visible_width, 1);
    TextField& field = hides ? hidden : plain;
    field.draw();
    model.draw();
    while (!input.isEmpty()) use(field, model, input);
    return 0;
}
