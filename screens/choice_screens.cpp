// The screens with check boxes: a question, and below it a list of things to tick and the buttons
// "Next" and "Back".

#include <algorithm>

#include "screens/screen.h"
#include "screens/screen_table.h"
#include "ui/label.h"
#include "ui/line_breaker.h"
#include "ui/list.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/listeners.h"

namespace {

enum Focus { focus_choices, focus_next, focus_back };

// Every such screen is centred as if it were this high.
constexpr int centring_rows = 15;

using Texts = std::vector<std::string>;

/// What one of them has different from the next.
struct Plan {
    int cols;             // width of the frame
    int rows_above_list;  // between the frame's top and the list, less the question's lines
    int next_col;         // column of the "Next" button
    std::string question;
    Texts entries;

    int count() const { return static_cast<int>(entries.size()); }
    int questionCols() const { return cols - 2; }
    int listRow() const {
        return rows_above_list + countLines(question.c_str(), questionCols(), break_between_words);
    }
    int buttonRow() const { return listRow() + count() + 1; }
};

class ChoiceScreen : public Screen {
  protected:
    // `checked` are the flags to start from, one per entry.
    ChoiceScreen(int state, const Plan& plan, const unsigned char* checked)
        : Screen(state, plan.buttonRow() + 5, plan.cols, centring_rows) {
        add<FormatLabel>(plan.question.c_str(), 3, 1, &frame, plan.questionCols(),
                         break_between_words);
        list = &add<ChoiceList>(&frame, plan.count(), text_pointers(plan.entries).data(), checked,
                                plan.listRow(), 1, pair_screen, pair_focus);
        list->setColors(pair_screen, pair_screen, 0);
        addControl({focus_choices, list, Enter::goes_to_widget});
        addButton(focus_next, plan.buttonRow(), plan.next_col, "Next");
        addButton(focus_back, plan.buttonRow(), 3, "Back");
    }

    // Copies the check marks to `flags`; leaves it alone where the list is empty.
    void store(unsigned char* flags) {
        int count = 0;
        const std::unique_ptr<unsigned char, FreeHeap> marks(list->getChecked(&count));
        std::copy(marks.get(), marks.get() + count, flags);
    }

  private:
    virtual void goOn() = 0;
    virtual void goBack() = 0;

    WizardEnd press(int button) override {
        if (button == focus_next)
            goOn();
        else
            goBack();
        return WizardEnd::not_yet;
    }

    ChoiceList* list = nullptr;
};

class AliasScreen : public ChoiceScreen {
  public:
    // Its "Next" stands where that of the domain screen does, which is narrower.
    AliasScreen(int state, const unsigned char* chosen)
        : ChoiceScreen(state,
                       {62,
                        4,
                        52,
                        std::string("Select which aliases to configure for the \"") +
                            wizard_settings.primary_domain + "\" domain.",
                        {"Redirect all mails for root account to postmaster",
                         "Add the 'localhost' alias to this domain",
                         "Add the 'localhost.localdomain' alias to this domain"}},
                       chosen) {}

  private:
    void goOn() override { storeAndLeave(next_screen_state(state)); }
    void goBack() override { storeAndLeave(previous_screen_state(state)); }

    void storeAndLeave(int to) {
        leave(to, to);
        unsigned char chosen[3] = {};
        store(chosen);
        wizard_settings.alias_root_to_postmaster = chosen[0];
        wizard_settings.alias_localhost = chosen[1];
        wizard_settings.alias_localhost_localdomain = chosen[2];
    }
};

class ServicesScreen : public ChoiceScreen {
  public:
    ServicesScreen(int state, const unsigned char* chosen)
        : ChoiceScreen(
              state,
              {60,
               4,
               49,
               "Which one of the following services do you want to enable in Teluma?",
               {optional_listeners[service_pop3].name, optional_listeners[service_imap].name,
                optional_listeners[service_webmail].name}},
              chosen) {}

  private:
    void goOn() override {
        store(wizard_settings.service_enabled);
        leave(next_screen_state(state), state);
    }

    void goBack() override { leave(previous_screen_state(state), previous_screen_state(state)); }
};

Texts network_texts() {
    Texts texts;
    for (int i = 0; i < relay_network_count; ++i)
        texts.push_back(std::string(relay_network_list[i].network) + "/" +
                        relay_network_list[i].netmask);
    return texts;
}

class RelayScreen : public ChoiceScreen {
  public:
    explicit RelayScreen(int state)
        : ChoiceScreen(state,
                       {60, 3, 49,
                        "Please select the networks which are allowed to relay mails through "
                        "TELUMA, without requiring authentication:",
                        network_texts()},
                       wizard_settings.relay_ticks) {}

  private:
    void goOn() override { storeAndLeave(next_screen_state(state)); }
    void goBack() override { storeAndLeave(previous_screen_state(state)); }

    void storeAndLeave(int to) {
        store(wizard_settings.relay_ticks);
        leave(to, state);
    }
};

}  // namespace

std::unique_ptr<Screen> create_alias_screen(int state) {
    const unsigned char chosen[] = {wizard_settings.alias_root_to_postmaster,
                                    wizard_settings.alias_localhost,
                                    wizard_settings.alias_localhost_localdomain};
    return std::make_unique<AliasScreen>(state, chosen);
}

std::unique_ptr<Screen> create_services_screen(int state) {
    const unsigned char all_ticked[optional_service_count] = {1, 1, 1};
    return std::make_unique<ServicesScreen>(state, all_ticked);
}

std::unique_ptr<Screen> create_relay_screen(int state) {
    std::fill_n(wizard_settings.relay_ticks, relay_network_count, 1);
    return std::make_unique<RelayScreen>(state);
}
