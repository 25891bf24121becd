#include "tools/pictures/scene_walk.h"

#include "tests/e2e/key_wait.h"
#include "tests/support/wait_until.h"

void SceneWalk::run(const std::function<void(const Scene&)>& filled_in) {
    for (const Scene& scene : demonstration()) {
        wizard.waitForText(scene.shows);
        strike(scene.answers);
        waitForKey();
        filled_in(scene);
        strike(scene.leaves);
    }
    wizard.waitExit();
}

void SceneWalk::strike(const std::vector<Stroke>& strokes) {
    for (const Stroke& stroke : strokes) {
        waitForKey();
        if (const Key* key = std::get_if<Key>(&stroke))
            wizard.press(*key);
        else if (const auto* text = std::get_if<std::string>(&stroke))
            wizard.type(*text);
        else
            other_programs.endBusyOne();
    }
}

void SceneWalk::waitForKey() {
    const auto waits = [this] {
        wizard.image();  // reads what was drawn: nobody waits for a key who can't draw on
        return waits_for_key(wizard.pid());
    };
    wait_until(waits, "the wizard waited for a key");
}
