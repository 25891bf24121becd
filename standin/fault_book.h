#pragma once

#include <map>
#include <string>
#include <vector>

#include "fault_rules.h"
#include "files.h"

/// Knows at which events the server has to misbehave.
///
/// The fault file is read again at every event, so it may change while the server runs; without a
/// file there are no faults. How often each rule was met stands in teluma.faults.seen, so that a
/// restart of the server goes on counting: a rule's count begins when the line first stands in the
/// file and is forgotten when the line is taken out.
class FaultBook {
  public:
    FaultBook(const RunPaths& paths, const CommandLog& command_log);

    /// Reads the fault file. Returns an empty text, or what is wrong with it.
    std::string reload();

    /// Counts the event and returns the fault of the first rule whose turn it is; notes it in the
    /// log. While the fault file can't be understood, that is noted and every event is refused.
    Fault at(Event event, const std::string& command = {});

  private:
    std::string source;
    std::string countsPath;
    const CommandLog& log;
    std::vector<FaultRule> rules;
    std::map<std::string, long> counts;  ///< by the rules' lines

    void loadCounts();
    void saveCounts() const;
};
