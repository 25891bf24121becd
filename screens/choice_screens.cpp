// The screens with check boxes: a question, and below it a list of things to tick and the buttons
// "Next" and "Back".

#include <string>

#include "screens/screen.h"
#include "screens/screen_table.h"
#include "ui/line_breaker.h"
#include "ui/list.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/listeners.h"

namespace {

enum Focus { focus_choices, focus_next, focus_back };

// Every such screen is centred as if it were this high.
constexpr int centring_rows = 15;

struct Choice {
    std::string text;
    unsigned char* flag;  // the setting, 0 or 1
};

/// What one of them has different from the next.
struct Plan {
    std::string question;
    std::vector<Choice> choices;
    int cols = 60;              // width of the frame
    int rows_above_list = 4;    // between the frame's top and the list, less the question's lines
    int next_col = 49;          // column of the "Next" button
    bool keeps_choices = true;  // shows what is stored, and "Back" stores too; else all is ticked

    int count() const { return static_cast<int>(choices.size()); }
    int listRow() const {
        return rows_above_list + countLines(question.c_str(), cols - 2, break_between_words);
    }
    int buttonRow() const { return listRow() + count() + 1; }
};

class ChoiceScreen : public Screen {
  public:
    ChoiceScreen(int state, const Plan& plan)
        : Screen(state, plan.buttonRow() + 5, plan.cols, centring_rows), plan(plan) {
        add<FormatLabel>(plan.question.c_str(), 3, 1, &frame, plan.cols - 2, break_between_words);
        std::vector<const char*> texts;
        std::vector<unsigned char> checked;
        for (const Choice& choice : plan.choices) {
            texts.push_back(choice.text.c_str());
            checked.push_back(plan.keeps_choices ? *choice.flag : 1);
        }
        list = &add<ChoiceList>(&frame, plan.count(), texts.data(), checked.data(), plan.listRow(),
                                1, pair_screen, pair_focus);
        list->setColors(pair_screen, pair_screen, 0);
        addControl({focus_choices, list, Enter::goes_to_widget});
        addButton(focus_next, plan.buttonRow(), plan.next_col, "Next");
        addButton(focus_back, plan.buttonRow(), 3, "Back");
    }

  private:
    WizardEnd press(int button) override {
        if (button == focus_next || plan.keeps_choices) store();
        if (button == focus_back) return goBack();
        // A step that fails may send the user back to SMTP, which leaves this screen's focus alone.
        if (state == state_services) screen_focus(state) = focus_choices;
        return goOn();
    }

    void store() {
        int count = 0;
        const std::unique_ptr<unsigned char, FreeHeap> marks(list->getChecked(&count));
        for (int i = 0; i < count; ++i) *plan.choices[static_cast<size_t>(i)].flag = marks.get()[i];
    }

    const Plan plan;
    ChoiceList* list = nullptr;
};

}  // namespace

std::unique_ptr<Screen> alias_screen_build(int state) {
    WizardSettings& settings = wizard_settings;
    Plan plan;
    plan.question = std::string("Select which aliases to configure for the \"") +
                    settings.primary_domain + "\" domain.";
    plan.choices = {
        {"Redirect all mails for root account to postmaster", &settings.alias_root_to_postmaster},
        {"Add the 'localhost' alias to this domain", &settings.alias_localhost},
        {"Add the 'localhost.localdomain' alias to this domain",
         &settings.alias_localhost_localdomain}};
    plan.cols = 62;
    plan.next_col = 52;
    return std::make_unique<ChoiceScreen>(state, plan);
}

std::unique_ptr<Screen> services_screen_build(int state) {
    Plan plan;
    plan.question = "Which one of the following services do you want to enable in Teluma?";
    for (const int service : {service_pop3, service_imap, service_webmail})
        plan.choices.push_back(
            {optional_listeners[service].name, &wizard_settings.service_enabled[service]});
    plan.keeps_choices = false;
    return std::make_unique<ChoiceScreen>(state, plan);
}

std::unique_ptr<Screen> relay_screen_build(int state) {
    Plan plan;
    plan.question =
        "Please select the networks which are allowed to relay mails through TELUMA, without "
        "requiring authentication:";
    for (int i = 0; i < relay_network_count; ++i) {
        const relay_network& record = relay_network_list[i];
        wizard_settings.relay_ticks[i] = 1;
        plan.choices.push_back(
            {std::string(record.network) + "/" + record.netmask, &wizard_settings.relay_ticks[i]});
    }
    plan.rows_above_list = 3;
    return std::make_unique<ChoiceScreen>(state, plan);
}
