#include "run_paths.h"

namespace standin {

RunPaths run_paths(const std::string& run_directory) {
    const std::string base = run_directory + "/";
    RunPaths paths;
    paths.config = base + "teluma.cfg";
    paths.pid = base + "teluma.pid";
    paths.state = base + "teluma.state";
    paths.password = base + "teluma.password";
    paths.log = base + "teluma.log";
    paths.faults = base + "teluma.faults";
    paths.faults_seen = base + "teluma.faults.seen";
    paths.smtp_filters = base + "smtp.filters";
    return paths;
}

}  // namespace standin
