#include "tests/e2e/wizard_run.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/e2e/key_wait.h"
#include "tests/support/frame.h"
#include "tests/support/screen_text.h"
#include "tests/support/wait_until.h"

namespace {

ProgramSetup with_sleeps(ProgramSetup setup) {
    setenv(WizardRun::sleep_variable, "5", 0);
    setup.environment.insert({"LD_PRELOAD", SLEEP_LENGTH});
    return setup;
}

}  // namespace

WizardRun::WizardRun(int rows, int cols, const std::string& term, const std::string& locale)
    : WizardRun(ProgramSetup{{WIZARD_PROGRAM}, rows, cols, term, locale}) {}

WizardRun::WizardRun(ProgramSetup setup) : TerminalProgram(with_sleeps(std::move(setup))) {}

bool WizardRun::comesToRest(const Caller& caller) {
    const auto rests = [this] {
        alternateScreen();  // reads what was drawn: nobody waits for a key who can't draw on
        return waits_for_key(pid()) || !process_running(pid());
    };
    wait_until(rests, "the wizard waited for a key", caller);
    return process_running(pid());
}

void WizardRun::waitForKey(const Caller& caller) {
    if (!comesToRest(caller))
        stop_test(caller, "the wizard has ended; the screen:\n" + to_text(image()));
}

void WizardRun::waitForScreen(Stop stop, const Caller& caller) {
    waitForDialog(title_of(stop), caller);
}

void WizardRun::waitForDialog(const std::string& text, const Caller& caller) {
    waitForText(text, caller);
    waitForKey(caller);
}

void WizardRun::dismissError(const std::string& message, const Caller& caller) {
    waitForDialog("Error!", caller);
    EXPECT_EQ(words_in_frame(image()), "Error! " + message + " OK") << "at line " << caller.line;
    press(Key::enter);
    waitGone("Error!", caller);
}

void WizardRun::answerFields(Stop stop, const std::vector<std::string>& texts) {
    moveFocus(stop, 0);
    for (const std::string& text : texts) {
        if (!text.empty()) retype(text);
        press(Key::tab);
    }
    press(Key::enter);
}

void WizardRun::answerListener(Stop stop, const ListenerAnswer& answer) {
    moveFocus(stop, 0);
    const int selected = image().find("│$ ")->row - image().find("Interface:")->row - 1;
    pressTimes(answer.row < selected ? Key::up : Key::down, std::abs(answer.row - selected));
    press(Key::tab);
    if (!answer.port.empty()) retype(answer.port);
    press(Key::tab);
    press(Key::enter);
    if (answer.loopback) answerYes();
}

void WizardRun::answerYes() {
    waitForText("WARNING!");
    press(Key::tab);
    press(Key::enter);
}

void WizardRun::answerBoxes(Stop stop, const std::vector<bool>& wanted) {
    moveFocus(stop, 0);
    const std::vector<bool> present = ticks();
    pressTimes(Key::up, static_cast<int>(present.size()));
    for (size_t i = 0; i < wanted.size(); ++i) {
        if (wanted[i] != present.at(i)) press(Key::space);
        press(Key::down);
    }
    pressNext(stop);
}

void WizardRun::answer(Stop stop, const Answers& answers) {
    switch (stop) {
        case Stop::password:
            return answerFields(stop, {answers.password, answers.password});
        case Stop::domain:
            return answerFields(stop,
                                {answers.domain, answers.location, answers.postmaster_password});
        case Stop::aliases:
            return answerBoxes(stop, answers.aliases);
        case Stop::services:
            return answerBoxes(stop, answers.services);
        case Stop::relay:
            return answerBoxes(stop, answers.relay);
        case Stop::sendmail:
            moveFocus(stop, answers.sendmail ? 0 : 1);
            return press(Key::enter);
        default:
            return answerListener(stop, answers.listener(stop));
    }
}

void WizardRun::walk(Stop from, Stop end, const Answers& answers) {
    for (int place = place_of(from); place != place_of(end); ++place) {
        if (answers.visit(stop_at(place))) answer(stop_at(place), answers);
    }
    waitForScreen(end);
}

void WizardRun::walkToTheEnd(const Answers& answers, Stop from) {
    walk(from, Stop::sendmail, answers);
    answer(Stop::sendmail, answers);
}

ExitStatus WizardRun::finish(const Caller& caller) {
    waitForText(" OK ", caller);
    press(Key::enter);
    return waitExit(caller);
}

void WizardRun::pressNext(Stop stop, const Caller& caller) {
    moveFocus(stop, facts_of(stop).next, caller);
    press(Key::enter);
}

void WizardRun::pressBack(Stop stop, const Caller& caller) {
    moveFocus(stop, facts_of(stop).back, caller);
    press(Key::enter);
}

void WizardRun::moveFocus(Stop stop, int control, const Caller& caller) {
    waitForScreen(stop, caller);
    const int controls = facts_of(stop).controls;
    pressTimes(Key::tab, (control - focus_on(image(), stop) + controls) % controls);
}

std::vector<bool> WizardRun::ticks() {
    const ScreenImage screen = image();
    std::vector<bool> found;
    for (int row = 0; row < screen.rows(); ++row) {
        const std::string text = screen.rowText(row);
        const bool ticked = text.find("[x] ") != std::string::npos;
        if (ticked || text.find("[ ] ") != std::string::npos) found.push_back(ticked);
    }
    return found;
}

void WizardRun::retype(const std::string& text) { type(std::string(50, '\x7f') + text); }

void WizardRun::pressTimes(Key key, int times) {
    for (int i = 0; i < times; ++i) press(key);
}
