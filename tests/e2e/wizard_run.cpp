#include "tests/e2e/wizard_run.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "tests/e2e/frame.h"
#include "tests/e2e/key_wait.h"
#include "tests/support/process.h"
#include "tests/support/screen_text.h"
#include "tests/support/wait_until.h"

namespace {

// The most characters that the fields hold.
constexpr int password_length = 50;
constexpr int domain_length = 50;
constexpr int location_length = 252;
constexpr int port_length = 5;

constexpr const char* sleep_variable = "TELUMA_SLEEP_MS";

// With sleeps that take next to no time, or as long as the test wants.
EnvironmentChanges with_sleeps(EnvironmentChanges environment) {
    environment.insert({"LD_PRELOAD", SLEEP_LENGTH});
    if (std::getenv(sleep_variable) == nullptr) environment.insert({sleep_variable, "5"});
    return environment;
}

// Listeners of services that were not chosen are passed.
bool is_visited(Stop stop, const Answers& answers) {
    const bool is_service = stop == Stop::pop3 || stop == Stop::imap || stop == Stop::webmail;
    return !is_service ||
           answers.services[static_cast<size_t>(place_of(stop) - place_of(Stop::pop3))];
}

}  // namespace

WizardRun::WizardRun(int rows, int cols, const std::string& term, const std::string& locale)
    : TerminalProgram({{WIZARD_PROGRAM}, rows, cols, term, locale, with_sleeps({})}) {}

WizardRun::WizardRun(const std::string& program)
    : TerminalProgram({{program}, 24, 80, "xterm-256color", "C.UTF-8", with_sleeps({})}) {}

WizardRun::WizardRun(const EnvironmentChanges& environment)
    : TerminalProgram(
          {{WIZARD_PROGRAM}, 24, 80, "xterm-256color", "C.UTF-8", with_sleeps(environment)}) {}

WizardRun::WizardRun(std::vector<std::string> command) : TerminalProgram({std::move(command)}) {}

WizardRun::~WizardRun() {
    std::error_code ignored;
    const std::filesystem::path directory =
        std::filesystem::read_symlink("/proc/" + std::to_string(pid()) + "/cwd", ignored);
    if (directory.stem() != "teluma-wizard") return;
    signal(SIGKILL);
    std::filesystem::remove_all(directory, ignored);
}

void WizardRun::setSleep(int milliseconds) {
    setenv(sleep_variable, std::to_string(milliseconds).c_str(), 1);
}

void WizardRun::waitForKey(const Caller& caller) {
    const auto waits = [this] {
        alternateScreen();  // reads what was drawn: nobody waits for a key who can't draw on
        return waits_for_key(pid()) || !process_running(pid());
    };
    wait_until(waits, "the wizard waited for a key", caller);
    if (!process_running(pid()))
        stop_test(caller, "the wizard has ended; the screen:\n" + to_text(image()));
}

void WizardRun::waitForScreen(Stop stop, const Caller& caller) {
    waitForDialog(title_of(stop), caller);
}

void WizardRun::waitForDialog(const std::string& text, const Caller& caller) {
    waitForText(text, caller);
    waitForKey(caller);
}

void WizardRun::dismissError(const std::string& text, const Caller& caller) {
    waitForText("Error!", caller);
    waitForText(text, caller);
    press(Key::enter);
    waitGone("Error!", caller);
}

void WizardRun::answerPassword(const std::string& password) {
    moveFocus(Stop::password, 0);
    for (int field = 0; field < 2; ++field) {
        retype(password_length, password);
        press(Key::tab);
    }
    press(Key::enter);
}

void WizardRun::answerDomain(const Answers& answers) {
    moveFocus(Stop::domain, 0);
    if (!answers.domain.empty()) retype(domain_length, answers.domain);
    press(Key::tab);
    if (!answers.location.empty()) retype(location_length, answers.location);
    press(Key::tab);
    retype(password_length, answers.postmaster_password);
    press(Key::tab);
    press(Key::enter);
}

void WizardRun::answerListener(Stop stop, const ListenerAnswer& answer) {
    moveFocus(stop, 0);
    const int selected = image().find("│$ ")->row - image().find("Interface:")->row - 1;
    pressTimes(answer.row < selected ? Key::up : Key::down, std::abs(answer.row - selected));
    press(Key::tab);
    if (!answer.port.empty()) retype(port_length, answer.port);
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

void WizardRun::answerSendmail(bool yes) {
    moveFocus(Stop::sendmail, yes ? 0 : 1);
    press(Key::enter);
}

void WizardRun::answer(Stop stop, const Answers& answers) {
    switch (stop) {
        case Stop::password:
            return answerPassword(answers.password);
        case Stop::domain:
            return answerDomain(answers);
        case Stop::aliases:
            return answerBoxes(stop, answers.aliases);
        case Stop::services:
            return answerBoxes(stop, answers.services);
        case Stop::relay:
            return answerBoxes(stop, answers.relay);
        case Stop::sendmail:
            return answerSendmail(answers.sendmail);
        default:
            return answerListener(stop, answers.listener(stop));
    }
}

void WizardRun::walk(Stop from, Stop end, const Answers& answers) {
    for (int place = place_of(from); place != place_of(end); ++place) {
        if (is_visited(stop_at(place), answers)) answer(stop_at(place), answers);
    }
    waitForScreen(end);
}

void WizardRun::walkToTheEnd(const Answers& answers, Stop from) {
    walk(from, Stop::sendmail, answers);
    answerSendmail(answers.sendmail);
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

void WizardRun::retype(int most, const std::string& text) {
    pressTimes(Key::backspace, most);
    type(text);
}

void WizardRun::pressTimes(Key key, int times) {
    for (int i = 0; i < times; ++i) press(key);
}
