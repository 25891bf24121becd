#pragma once

#include <vector>

/// Where a run comes to in which a call has failed.
enum class Outcome {
    completes,         // as if nothing had happened
    completes_untidy,  // the same, but the private directory stays behind
    waits,             // for the end of the server, which has not been told to end, until Ctrl-C
    no_login,          // "Could not login", and the end
    no_relay,          // the relay step fails and leads back to its screen
    no_sendmail,       // the sendmail step fails and leads back to its screen
};

/// A call that fails, in the form of shim_orders.h.
struct FaultCase {
    const char* call;
    int count;  // which of the calls of this kind; from the last one backwards where negative
    int failure;
    Outcome outcome;
};

/// The faults of one part of a run.
struct FaultGroup {
    const char* name;
    std::vector<FaultCase> cases;
};

const std::vector<FaultGroup>& fault_groups();
