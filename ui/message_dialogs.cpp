#include "ui/message_dialogs.h"

#include <cstring>

#include "ui/modal_dialog.h"
#include "ui/pending_box.h"
#include "wizard/base/screen_state.h"
#include "wizard/system/port_probe.h"

namespace {

constexpr int widest = 60;
constexpr int yes_no_width = 62;
constexpr int button_width = 6;
constexpr int retry_width = 7;

// As narrow as the message allows, up to a width from which it is broken into lines.
int width_for(const char* message) {
    const size_t length = std::strlen(message);
    return length < widest - 1 ? static_cast<int>(length) + 2 : widest;
}

}  // namespace

void showMessage(const char* message, const char* title) {
    const int width = width_for(message);
    ModalDialog dialog(state_message, message, title, width,
                       {{"OK", (width - button_width) / 2, button_width}});
    dialog.run();
}

int askYesNo(const char* message, const char* title) {
    ModalDialog dialog(
        state_yes_no, message, title, yes_no_width,
        {{"No", 3, button_width}, {"Yes", yes_no_width - 3 - button_width, button_width}});
    return dialog.run();
}

int askRetryOrBack(const char* message, const char* title, const char* host, int port) {
    {
        const int width = width_for(message);
        const int middle = (width - button_width) / 2;
        ModalDialog dialog(
            state_retry_back, message, title, width,
            {{"Retry", middle + 20, retry_width}, {"Back", middle - 20, button_width}});
        const int retry = 0;
        if (dialog.run() != retry)
            return 0;
    }
    showPending("Please wait until the port is being checked!", "Operation pending!");
    const int result = probe_port(host, port);
    closePending();
    return result != 0 ? 1 : -1;
}
