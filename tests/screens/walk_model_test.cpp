// Keys drawn by chance, with changes of the terminal's size, programs that take ports and steps
// that fail, played to the wizard and to a plain model of it; and a default port, which only a
// network of the test's own is sure to have.

#include "tests/screens/walk_model.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "tests/support/golden.h"
#include "tests/support/local_port.h"

namespace {

std::string described(const WizardSettings& settings) {
    std::ostringstream text;
    for (const char* answer : {settings.admin_password, settings.primary_domain,
                               settings.domain_location, settings.postmaster_password})
        text << answer << "|";
    for (const ListenerFacts& each : all_listeners())
        text << settings.*each.interface_index << ":" << settings.*each.port << " ";
    for (const int flag :
         {settings.alias_root_to_postmaster, settings.alias_localhost,
          settings.alias_localhost_localdomain, settings.service_enabled[0],
          settings.service_enabled[1], settings.service_enabled[2], settings.relay_ticks[0],
          settings.relay_ticks[1], settings.relay_ticks[2]})
        text << flag << " ";
    text << settings.sendmail_wrapper;
    return text.str();
}

/// One walk, from a seed.
class ModelledWalk {
  public:
    explicit ModelledWalk(int seed)
        : chance(static_cast<unsigned>(seed)), first(seed % screen_count) {
        apply_double.leads_to = model.apply_leads_to;
    }

    void play(int actions) {
        for (int action = 0; action < actions; ++action) {
            act();
            compare();
        }
        wizard.play(steps);
    }

  private:
    size_t draw(size_t count) {
        return std::uniform_int_distribution<size_t>(0, count - 1)(chance);
    }

    template <class Value>
    Value oneOf(std::initializer_list<Value> values) {
        return values.begin()[draw(values.size())];
    }

    void press(const std::string& keys) {
        for (const char key : keys) {
            if (model.state() == state_password && model.control().name == "exit" && key != '\t')
                continue;
            model.press(key);
            typed += key;
            steps.push_back(key == '\n' ? Step(Key::enter) : Step(std::string(1, key)));
        }
    }

    void press(Key key) {
        model.press(key == Key::up ? model_up : model_down);
        typed += key == Key::up ? "<up>" : "<down>";
        steps.emplace_back(key);
    }

    // What the user, the host and the terminal do next.
    void act() {
        const size_t kind = draw(10);
        if (kind < 3) {
            press(oneOf<std::string>({"\t", "\n", " ", "x", "7", "\x7f"}));
        } else if (kind < 5) {
            press(oneOf({Key::up, Key::down}));
        } else if (kind < 7 && model.field() != nullptr) {
            press(std::string(model.field()->size(), model_erase) +
                  oneOf<std::string>({"", "secret", "Secret", "77", "0", "65535", "65536", "8x",
                                      "00080", "-1", "example.org", std::string(51, 'l')}));
        } else if (kind < 9) {
            press(std::string(static_cast<size_t>(model.tabsToNext()), '\t') +
                  oneOf<std::string>({"\n", " ", "\t\n", "\t\t "}));
        } else {
            disturb();
        }
    }

    void disturb() {
        const Size size = oneOf({smallest, usual, large, odd});
        const bool take = model.port_77_is_taken = draw(2) == 0;
        const int leads_to = model.apply_leads_to =
            oneOf<int>({state_domain, state_aliases, state_webadmin, state_smtp, state_services,
                        state_relay, state_sendmail});
        steps.emplace_back([this, size, take, leads_to] {
            wizard.resize(size);
            port.close();
            if (take) port.open("0.0.0.0", 100);
            apply_double.leads_to = leads_to;
        });
    }

    void compare() {
        WalkModel expected = model;
        steps.emplace_back([this, expected, keys = std::move(typed)]() mutable {
            if (testing::Test::HasFailure()) return;
            SCOPED_TRACE("after " + testing::PrintToString(keys));
            ASSERT_EQ(screen_state, expected.state());
            if (screen_state < screen_count) {
                ASSERT_EQ(screen_focus(screen_state), expected.focus(screen_state));
            }
            ASSERT_EQ(described(wizard_settings), described(expected.settings));
            ASSERT_EQ(apply_double.calls, expected.applied);
            const ScreenImage image = wizard.image();
            for (const std::string& text : expected.shown())
                ASSERT_TRUE(image.shows(text)) << text << "\n" << image.text();
        });
    }

    std::mt19937 chance;
    const int first;
    WizardRig wizard{first};
    WalkModel model{first};
    LocalPort port{77};
    std::vector<Step> steps;
    std::string typed;  // since the last look
};

TEST(WalkModel, does_what_the_wizard_does) {
    for (int seed = 0; seed < 3 * screen_count && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        ModelledWalk(seed).play(80);
    }
}

TEST(DefaultPort, that_is_taken_is_warned_of_on_the_smallest_terminal) {
    LocalPort port(9000);
    port.open();
    WizardRig wizard(state_webadmin, smallest);
    wizard.play({"\t\t", Key::enter, Key::tab});
    EXPECT_SCREEN(wizard.image(), "golden/port_in_use_on_the_smallest_terminal");
}

}  // namespace
