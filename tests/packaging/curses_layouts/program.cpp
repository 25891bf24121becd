#include <curses.h>
#include <panel.h>

// Succeeds with the functions of a layout, which answer 0.
int main() {
    wint_t key = 0;
    return get_wch(&key) + (panel_above(nullptr) == nullptr ? 0 : 1);
}
