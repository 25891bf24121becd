#include "wizard/release_screens.h"

#include "apply/progress_list.h"
#include "screens/screen_table.h"
#include "ui/main_window.h"
#include "ui/pending_box.h"
#include "ui/window.h"
#include "wizard/base/host_facts.h"

void release_screens() {
    progress_hide_all();
    closePending();
    destroy_screens();
    release_networks();
    delete main_window;
    main_window = nullptr;
}
