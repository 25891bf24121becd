#pragma once

#include <map>
#include <string>
#include <vector>

#define RUN "/var/opt/teluma/run"
#define PID_FILE RUN "/teluma.pid"
#define CONFIG RUN "/teluma.cfg"
#define FILTERS RUN "/smtp.filters"
#define OLD ".beforewizard"
#define COPY "temp.cfg"
#define DIRECTORY "private directory"
#define SERVER "/opt/teluma/bin/teluma"
#define WRAPPER "/opt/teluma/bin/sendmail"
#define SENDMAIL "/usr/sbin/sendmail"
#define QUIETLY " >> /dev/null"

/// Where a run comes to in which a call has failed.
enum class Outcome {
    completes,         // as if nothing had happened
    completes_untidy,  // the same, but the private directory stays behind
    waits,             // for the end of the server, which has not been told to end, until Ctrl-C
    no_login,          // "Could not login", and the end
    no_relay,          // the relay step fails and leads back to its screen
    no_sendmail,       // the sendmail step fails and leads back to its screen
};

/// The calls of one part of a run, and what comes of it when each fails: the wizard's unless they
/// begin with "cp" or "rm", then the call and what it is about as shim_orders.h has them. "#2" is
/// the second of the calls of this kind, "#-1" the last; without it the first is meant.
struct FaultGroup {
    const char* name;
    std::map<Outcome, std::vector<std::string>> calls;
};

/// Every kind of call of a run.
inline std::vector<FaultGroup> fault_groups() {
    const Outcome completes = Outcome::completes;
    const Outcome completes_untidy = Outcome::completes_untidy;
    const Outcome waits = Outcome::waits;
    const Outcome no_login = Outcome::no_login;
    const Outcome no_relay = Outcome::no_relay;
    const Outcome no_sendmail = Outcome::no_sendmail;
    return {
        {"start_and_end",
         {{completes, {"mkdtemp " DIRECTORY, "chdir " DIRECTORY, "unlink " COPY "#-1"}},
          {completes_untidy, {"fchdir #-1", "rmdir " DIRECTORY}}}},
        // Setting the password, starting the server, looking up its address.
        {"the_server",
         {{waits, {"openat " PID_FILE, "fdopen " PID_FILE, "read " PID_FILE}},
          {completes, {"openat " PID_FILE "#-1", "read " PID_FILE "#-1", "close " PID_FILE}},
          {no_login,
           {"fork ", "fchdir ", "execl " SERVER " -A \"Adm1n secret\"" QUIETLY, "fork #4",
            "fchdir #2", "execl " SERVER QUIETLY, "pipe #-3", "fork #5"}}}},
        // To open the file, before the copy, after it (and once more: is it still the same?).
        {"the_ways_to_the_files",
         {{completes, {"lstat " RUN, "close " RUN, "lstat " RUN "/."}},
          {waits, {"openat " RUN, "lstat " PID_FILE}},
          {no_login, {"lstat " CONFIG, "lstat " CONFIG "#2", "lstat " CONFIG "#4"}},
          {no_relay, {"lstat " FILTERS, "lstat " FILTERS "#2", "lstat " FILTERS "#3"}}}},
        {"the_configuration",
         {{no_login,
           {"openat " CONFIG, "fdopen " CONFIG, "read " CONFIG, "open " COPY, "fdopen " COPY,
            "write " COPY, "close " COPY}},
          {completes, {"close " CONFIG}}}},
        {"the_original_of_the_configuration",
         {{no_login,
           {"lstat " CONFIG OLD, "openat " CONFIG OLD ".new", "read " CONFIG "#2",
            "read " CONFIG "#3", "write " CONFIG OLD ".new", "fchown " CONFIG OLD ".new",
            "fchmod " CONFIG OLD ".new", "fsync " CONFIG OLD ".new", "close " CONFIG OLD ".new",
            "linkat " CONFIG OLD}},
          {completes, {"unlinkat " CONFIG OLD ".new"}}}},
        // What the commands say is not looked at.
        {"the_copy_over_the_configuration",
         {{no_login,
           {"fork #2", "execl cp " COPY " " CONFIG QUIETLY, "cp open " COPY, "cp openat " CONFIG,
            "cp copy_file_range " CONFIG, "cp read " COPY, "cp write " CONFIG}},
          {completes,
           {"cp open " CONFIG, "cp close " CONFIG, "cp close " COPY, "fork #3",
            "execl rm " COPY QUIETLY, "rm unlinkat " COPY, "unlink " COPY}}}},
        {"the_filters_script",
         {{no_relay,
           {"openat " FILTERS, "fdopen " FILTERS, "read " FILTERS, "open " COPY "#2",
            "fdopen " COPY "#2", "write " COPY "#2", "close " COPY "#2", "fork #8",
            "fchown " FILTERS}},
          {completes,
           {"close " FILTERS, "fork #6", "execl cp " COPY " " FILTERS QUIETLY, "cp open " FILTERS,
            "cp openat " FILTERS, "cp copy_file_range " FILTERS, "cp write " FILTERS,
            "cp close " FILTERS, "fork #7"}}}},
        {"the_original_of_the_filters_script",
         {{no_relay,
           {"lstat " FILTERS OLD, "openat " FILTERS OLD ".new", "read " FILTERS "#2",
            "write " FILTERS OLD ".new", "fchown " FILTERS OLD ".new", "fchmod " FILTERS OLD ".new",
            "fsync " FILTERS OLD ".new", "close " FILTERS OLD ".new", "linkat " FILTERS OLD}},
          {completes, {"unlinkat " FILTERS OLD ".new"}}}},
        {"sendmail",
         {{no_sendmail,
           {"lstat " WRAPPER, "openat " WRAPPER, "fork #9", "fchown " WRAPPER, "fchmod " WRAPPER,
            "rename " SENDMAIL, "symlink " SENDMAIL}},
          {completes,
           {"close " WRAPPER, "readlink " SENDMAIL, "lstat " SENDMAIL,
            "lstat " SENDMAIL ".beforeteluma", "lstat " SENDMAIL ".beforeteluma1"}}}},
    };
}
