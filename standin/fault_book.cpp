#include "fault_book.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "text.h"

FaultBook::FaultBook(const RunPaths& paths, const CommandLog& command_log)
    : source(paths.faults), countsPath(paths.faults_seen), log(command_log) {}

std::string FaultBook::reload() {
    rules.clear();
    std::string text;
    if (!read_all(source, text))
        return errno == ENOENT ? std::string() : source + ": " + std::strerror(errno);
    const std::string problem = parse_fault_rules(text, rules);
    return problem.empty() ? problem : source + ": " + problem;
}

Fault FaultBook::at(Event event, const std::string& command) {
    const std::string problem = reload();
    if (!problem.empty()) {
        log.note(problem);
        return {FaultKind::refuse, 0};
    }
    loadCounts();
    Fault fault;
    for (const FaultRule& rule : rules) {
        if (!is_about(rule, event, command)) continue;
        const long count = ++counts[rule.source];
        if (fault.kind == FaultKind::none && (rule.occurrence == 0 || rule.occurrence == count)) {
            fault = rule.fault;
            log.note("fault: " + rule.source);
        }
    }
    saveCounts();
    return fault;
}

void FaultBook::loadCounts() {
    counts.clear();
    std::string text;
    read_all(countsPath, text);
    std::map<std::string, long> saved;
    for (const std::string& line : lines_of(text))
        saved[rest_from_word(line, 1)] = std::strtol(line.c_str(), nullptr, 10);
    for (const FaultRule& rule : rules) counts[rule.source] = saved[rule.source];
}

void FaultBook::saveCounts() const {
    if (counts.empty()) return;
    std::string text;
    for (const auto& [rule, count] : counts) text += std::to_string(count) + " " + rule + "\n";
    replace_file(countsPath, text, S_IRUSR | S_IWUSR);
}
