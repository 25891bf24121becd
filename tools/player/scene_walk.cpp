#include "tools/player/scene_walk.h"

#include "tests/e2e/key_wait.h"
#include "tests/support/wait_until.h"

ExitStatus SceneWalk::run() {
    for (const Scene& scene : demonstration()) {
        wizard.waitForText(scene.shows);
        bool goes_on = strike(scene.answers);
        waitForKey();
        if (goes_on) {
            show(scene);
            goes_on = pause(std::chrono::milliseconds(1200)) && strike(scene.leaves);
        }
        if (!goes_on) {
            wizard.press(Key::ctrl_c);
            break;
        }
    }
    return wizard.waitExit();
}

bool SceneWalk::strike(const std::vector<Stroke>& strokes) {
    for (const Stroke& stroke : strokes) {
        waitForKey();
        if (!strike(stroke)) return false;
    }
    return true;
}

bool SceneWalk::strike(const Stroke& stroke) {
    if (!pause(std::chrono::milliseconds(300))) return false;
    if (const auto* text = std::get_if<std::string>(&stroke)) return type(*text);
    if (const Key* key = std::get_if<Key>(&stroke))
        wizard.press(*key);
    else
        other_programs.endBusyOne();
    return true;
}

bool SceneWalk::type(const std::string& text) {
    for (const char character : text) {
        wizard.type(std::string(1, character));
        if (!pause(std::chrono::milliseconds(90))) return false;
    }
    return true;
}

void SceneWalk::waitForKey() {
    const auto waits = [this] {
        wizard.image();  // reads what was drawn: nobody waits for a key who can't draw on
        return waits_for_key(wizard.pid());
    };
    wait_until(waits, "the wizard waited for a key");
}
