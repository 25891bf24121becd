// Whatever keys and texts a field gets, its text, its cursor and what it shows are the model's; and
// what the keys echo is what a fresh drawing shows.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "fuzz/window_text.h"
#include "ui/pass_text_field.h"
#include "ui/text_field.h"
#include "wizard/base/heap_text.h"

namespace {

struct Measures {
    int max_length;
    int visible_width;
};

// A field that remembers and shows as TextField does.
class FieldModel {
  public:
    explicit FieldModel(Measures measures)
        : measures(measures),
          buffer(static_cast<std::size_t>(measures.max_length) + 1, '\0'),
          row(static_cast<std::size_t>(measures.visible_width) + 1, ' ') {}
    virtual ~FieldModel() = default;
    FieldModel(const FieldModel&) = delete;
    FieldModel& operator=(const FieldModel&) = delete;

    std::string text() const { return c_text(buffer); }
    const std::string& shown() const { return row; }
    int cursor() const { return std::min(length, measures.visible_width); }

    virtual void draw() { row = echo(); }

    virtual void setText(const std::string& text) {
        store(text);
        length = static_cast<int>(text.size());
    }

    void press(int key) {
        if (key == 8 || key == 127 || key == KEY_BACKSPACE)
            removeLast();
        else if (key >= ' ' && key < 127 && length < measures.max_length)
            append(static_cast<char>(key));
    }

  protected:
    // The characters that stand in the field for the text's last ones, filled up with spaces.
    virtual std::string echo() const {
        const std::string all = text();
        const auto width = static_cast<std::size_t>(measures.visible_width);
        std::string tail = all.size() > width ? all.substr(all.size() - width) : all;
        return tail + std::string(width + 1 - tail.size(), ' ');
    }

    virtual void append(char character) {
        buffer[static_cast<std::size_t>(length++)] = character;
        buffer[static_cast<std::size_t>(length)] = '\0';
        row = echo();
    }

    virtual void removeLast() {
        if (length == 0)
            return;
        buffer[static_cast<std::size_t>(--length)] = '\0';
        row = echo();
    }

    // What stands after a shorter text stays.
    void store(const std::string& text) {
        buffer.resize(std::max(buffer.size(), text.size() + 1));
        buffer.replace(0, text.size() + 1, text + '\0');
    }

    const Measures measures;
    std::string buffer;
    std::string row;
    int length = 0;
};

// The same for PassTextField, which draws stars over what stands there, counts its characters anew
// when it does, and does not end the text after a character that is typed.
class PassFieldModel : public FieldModel {
  public:
    using FieldModel::FieldModel;

    void draw() override {
        length = static_cast<int>(text().size());
        star(std::min(length, measures.visible_width));
    }

    void setText(const std::string& text) override { store(text); }

  protected:
    void append(char character) override {
        buffer[static_cast<std::size_t>(length++)] = character;
        star(std::min(length, measures.visible_width));
        if (length <= measures.visible_width)
            draw();
    }

    void removeLast() override {
        if (length == 0)
            return;
        buffer[static_cast<std::size_t>(--length)] = '\0';
        if (length >= measures.visible_width)
            star(measures.visible_width);
        else
            row[static_cast<std::size_t>(length)] = ' ';
    }

  private:
    void star(int count) { std::fill_n(row.begin(), count, '*'); }
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
    const bool hidden = input.takeNumber(0, 1) == 1;
    const Measures measures{input.takeNumber(1, 60), input.takeNumber(1, 40)};
    std::unique_ptr<TextField> field;
    std::unique_ptr<FieldModel> model;
    if (hidden) {
        field = std::make_unique<PassTextField>(nullptr, 1, 1, measures.max_length,
                                                measures.visible_width, 1);
        model = std::make_unique<PassFieldModel>(measures);
    } else {
        field = std::make_unique<TextField>(nullptr, 1, 1, measures.max_length,
                                            measures.visible_width, 1);
        model = std::make_unique<FieldModel>(measures);
    }
    field->draw();
    model->draw();
    while (!input.isEmpty())
        use(*field, *model, input);
    return 0;
}
