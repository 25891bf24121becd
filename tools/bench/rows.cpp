#include "tools/bench/rows.h"

namespace {

constexpr Target no_target = {};
constexpr Target as_better_peer = {Target::Kind::better_peer, 0};

constexpr Target at_most(double limit) {
    return {Target::Kind::at_most, limit};
}

}  // namespace

const std::vector<Row> compared_rows = {
    {"start", "exec to the complete first screen, ms", 2, as_better_peer},
    {"beyond_floor", "the same beyond the floor's, ms", 2, at_most(1)},
    {"screen_bytes", "bytes of the first screen", 0, as_better_peer},
    {"screen_writes", "writes for the first screen", 0, at_most(2)},
    {"password_bytes", "bytes per character, password", 0, at_most(1)},
    {"password_writes", "writes per character, password", 0, at_most(1)},
    {"password_first", "bytes of the first character, password", 0, no_target},
    {"text_bytes", "bytes per character, text", 0, at_most(1)},
    {"text_writes", "writes per character, text", 0, at_most(1)},
    {"text_first", "bytes of the first character, text", 0, no_target},
    {"resize_bytes", "bytes for a resize to 100x34", 0, as_better_peer},
    {"resize_writes", "writes for a resize to 100x34", 0, as_better_peer},
    {"memory", "memory (PSS) at the first screen, kB", 0, as_better_peer},
    {"idle_first", "processor time in 5 idle seconds, ms: first screen", 2, at_most(0)},
    {"idle_dialog", "processor time in 5 idle seconds, ms: open dialog", 2, at_most(0)},
    {"idle_resized", "processor time in 5 idle seconds, ms: open dialog after a resize", 2,
     at_most(0)},
};

const std::vector<Row> own_rows = {
    {"apply_whole", "an apply run, ms", 0, no_target},
    {"apply_asleep", "in it: sleeps that the run has to make, ms", 0, no_target},
    {"apply_server", "in it: waiting for the server and its commands, ms", 0, no_target},
    {"apply_own", "in it: all the rest, ms", 0, at_most(100)},
    {"walk_bytes", "bytes of the walk through all 11 screens", 0, no_target},
    {"executable", "size of the executable, bytes", 0, no_target},
    {"stripped", "the same without symbols, as in a package", 0, no_target},
};

const std::vector<Row> list_rows = {
    {"list_screen_bytes", "bytes of the screen with the list", 0, no_target},
    {"list_screen_time", "time until it is complete, ms", 2, no_target},
    {"list_key_bytes", "bytes for a cursor key in the list", 0, no_target},
    {"list_key_time", "time until its answer is complete, ms", 2, no_target},
};
