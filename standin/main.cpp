// The stand-in server as a program; its README tells how it is called.

#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "address.h"
#include "config_file.h"
#include "daemon.h"
#include "fault_book.h"
#include "files.h"
#include "server.h"
#include "store.h"
#include "text.h"

namespace {

/// How to run: teluma [-f] [-r DIRECTORY], the server; or teluma [-r DIRECTORY] -A PASSWORD.
struct Options {
    std::string run_directory = "/var/opt/teluma/run";  ///< -r, made absolute
    bool foreground = false;                            ///< -f: does not become a daemon
    std::optional<std::string> password;                ///< -A
};

bool parse_options(int argument_count, char** arguments, Options& options, std::string& problem) {
    bool good = true;
    for (int option = 0; (option = getopt(argument_count, arguments, "A:fr:")) != -1;) {
        if (option == 'A')
            options.password = optarg;
        else if (option == 'r')
            options.run_directory = optarg;
        good = good && option != '?';
        options.foreground = options.foreground || option == 'f';
    }
    // The daemon leaves its current directory, so a relative path would lead elsewhere.
    char path[PATH_MAX];
    if (!good || optind != argument_count)
        problem = "usage: teluma [-f] [-r DIRECTORY] | [-r DIRECTORY] -A PASSWORD";
    else if (realpath(options.run_directory.c_str(), path) == nullptr)
        problem = options.run_directory + ": " + std::strerror(errno);
    else
        options.run_directory = path;
    return problem.empty();
}

/// What every part of a run needs.
struct Run {
    RunPaths paths;
    CommandLog log;
    Store store;
    FaultBook faults;

    explicit Run(const std::string& directory)
        : paths{directory}, log(paths.log), store(paths), faults(paths, log) {}
};

/// Says on standard error and in the log what has gone wrong. Returns 1, the exit status.
int fail(const Run& run, const std::string& problem) {
    run.log.note(problem);
    std::fprintf(stderr, "teluma: %s\n", problem.c_str());
    return 1;
}

int set_password(const Run& run, const std::string& password) {
    run.log.command("-A " + password);
    return run.store.setPassword(password) ? 0 : fail(run, "the password can't be stored");
}

/// Reads configuration, state and fault rules, and opens the listener if the configuration wants
/// it. Returns what is wrong, or an empty text.
std::string prepare(Run& run, Descriptor& listener, std::string& address) {
    std::string text;
    if (!read_all(run.paths.config, text)) return run.paths.config + ": " + std::strerror(errno);
    const Config config = parse_config(text);
    if (!config.smtp_filters.empty()) run.store.smtp_filters = config.smtp_filters;
    std::string problem = run.store.load(config.state);
    if (problem.empty()) problem = run.faults.reload();
    if (problem.empty() && contains(config.state.services, "cli")) {
        address = config.cli_address;
        listener = open_listener(address, problem);
    }
    return problem;
}

/// Writes the pid file now, or says when the server has to; `fault` is the start's.
bool write_pid_or_postpone(const Run& run, const Fault& fault,
                           std::optional<Clock::time_point>& due) {
    if (fault.kind == FaultKind::late) due = Clock::now() + as_duration(fault.amount);
    return due || fault.kind == FaultKind::missing || write_pid_file(run.paths.pid);
}

void wait_until(Clock::time_point time) {
    std::vector<pollfd> nothing;
    while (Clock::now() < time) wait_for_events(nothing, time);
}

void stop(Run& run) {
    const Fault fault = run.faults.at(Event::stop);
    if (fault.kind == FaultKind::stays && fault.amount == stays_for_ever) return;
    if (fault.kind == FaultKind::stays) wait_until(Clock::now() + as_duration(fault.amount));
    remove_pid_file(run.paths.pid);
}

/// The server's life, from the pid file to its removal.
int serve(Run& run, Descriptor listener, Descriptor& ready, const Fault& fault) {
    std::optional<Clock::time_point> pid_due;
    if (!write_pid_or_postpone(run, fault, pid_due))
        return fail(run, run.paths.pid + ": " + std::strerror(errno));
    if (ready.isOpen()) daemon_is_ready(ready);
    Server(std::move(listener), run.store, run.faults, run.log).run(run.paths.pid, pid_due);
    stop(run);
    run.log.note("stopped");
    return 0;
}

int run_server(Run& run, bool foreground) {
    Descriptor listener;
    std::string address = "no address";
    const std::string problem = prepare(run, listener, address);
    if (!problem.empty()) return fail(run, problem);
    const Fault fault = run.faults.at(Event::start);
    if (fault.kind == FaultKind::refuse) return fail(run, "does not start");
    catch_stop_signals();
    Descriptor ready;
    if (!foreground) {
        const std::optional<int> status = become_daemon(ready);
        if (status) return *status;
    }
    run.log.note("started, process " + std::to_string(getpid()) + ", listening at " + address);
    return serve(run, std::move(listener), ready, fault);
}

}  // namespace

int main(int argument_count, char** arguments) {
    Options options;
    std::string problem;
    if (!parse_options(argument_count, arguments, options, problem)) {
        std::fprintf(stderr, "teluma: %s\n", problem.c_str());
        return 2;
    }
    Run run(options.run_directory);
    return options.password ? set_password(run, *options.password)
                            : run_server(run, options.foreground);
}
