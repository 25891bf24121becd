#include "tools/player/scenes.h"

#include "tests/support/screen_table.h"
#include "tools/player/other_programs.h"

namespace {

// A screen that is filled in by `answers` and left by Enter.
Scene screen(Stop stop, const std::string& name, const std::vector<Stroke>& answers) {
    return {name, facts_of(stop).name, title_of(stop), answers, {Key::enter}};
}

Scene listener(Stop stop, const std::string& service) {
    return screen(stop, service + " listener", {Key::tab, Key::tab});
}

// One that has been seen before.
Scene again(Scene scene, const std::vector<Stroke>& answers) {
    scene.picture.clear();
    scene.answers = answers;
    return scene;
}

// The backspace key, so often.
std::string erasing(size_t characters) { return std::string(characters, '\x7f'); }

void append(std::vector<Scene>& list, const std::vector<Scene>& more) {
    list.insert(list.end(), more.begin(), more.end());
}

// A password that is mistyped first.
std::vector<Scene> password_scenes() {
    const Scene first =
        screen(Stop::password, "Administrator password", {"S3cret!", Key::tab, "S3cret", Key::tab});
    Scene second = again(first, {Key::tab, "!", Key::tab});
    second.name += ", again";
    return {first, {"Passwords that differ", "error", "Error!", {}, {Key::enter}}, second};
}

std::vector<Scene> domain_scenes() {
    return {screen(Stop::domain, "Domain",
                   {erasing(11) + "example.com", Key::tab, Key::tab, "postmaster's", Key::tab}),
            screen(Stop::aliases, "Aliases", {Key::down, Key::down, Key::tab})};
}

// A port that another program has, and then the one that stood there at first.
std::vector<Scene> webadmin_scenes() {
    Scene taken = listener(Stop::webadmin, "WebAdmin");
    taken.leaves = {Key::tab, Key::tab,  Key::tab, erasing(4) + std::to_string(port_in_use),
                    Key::tab, Key::enter};
    return {taken,
            {"A port that is taken", "port_in_use", "Warning!", {Key::tab}, {Key::enter}},
            again(listener(Stop::webadmin, "WebAdmin"), {erasing(4) + "9000", Key::tab})};
}

std::vector<Scene> service_scenes() {
    Scene loopback = listener(Stop::imap, "IMAP");
    loopback.answers.insert(loopback.answers.begin(), Key::down);
    return {
        listener(Stop::smtp, "SMTP"),
        screen(Stop::services, "Services", {Key::down, Key::down, Key::tab}),
        listener(Stop::pop3, "POP3"),
        {"A port that is being checked",
         "port_check",
         "Operation pending!",
         {},
         {EndOfBusyProgram{}}},
        loopback,
        {"Loopback question", "loopback", "WARNING!", {Key::tab}, {Key::enter}},
        listener(Stop::webmail, "WebMail"),
    };
}

std::vector<Scene> last_scenes() {
    return {
        screen(Stop::relay, "Relay networks", {Key::down, Key::space, Key::tab}),
        screen(Stop::sendmail, "Sendmail wrapper", {}),
        {"Applying the answers", "apply", " OK ", {}, {Key::enter}},
    };
}

}  // namespace

std::vector<Scene> demonstration() {
    std::vector<Scene> scenes = password_scenes();
    append(scenes, domain_scenes());
    append(scenes, webadmin_scenes());
    append(scenes, service_scenes());
    append(scenes, last_scenes());
    return scenes;
}
