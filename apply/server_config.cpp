#include "apply/server_config.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "apply/file_rewrite.h"
#include "apply/named_file.h"
#include "apply/server_session.h"
#include "wizard/base/heap_text.h"

namespace {

std::string without(std::string text, const std::string& unwanted) {
    const auto is_unwanted = [&](char character) {
        return unwanted.find(character) != std::string::npos;
    };
    text.erase(std::remove_if(text.begin(), text.end(), is_unwanted), text.end());
    return text;
}

bool has_key(const std::string& line, const char* key) {
    const HeapText found(config_key_of(line.c_str()));
    return found != nullptr && std::strcmp(found.get(), key) == 0;
}

// Copies lines up to and including the first one that has this key, which a commented line has not,
// as its key begins with the "#". Returns false when the file ends before.
bool copy_up_to_key(FileRewrite& config, std::string& line, const char* key) {
    while (!server_session.out_of_memory && config.read(line)) {
        config.write(line);
        if (has_key(line, key)) return true;
    }
    return false;
}

}  // namespace

void config_rewrite(FileRewrite& config) {
    std::string line;
    bool services_seen = false;
    // A read that fails at the end of the file leaves the last line in place, to be met again.
    while (config.goesOn() && !server_session.out_of_memory) {
        config.read(line);
        const bool is_comment = config_line_is_comment(line.c_str());
        const bool begins_section = services_seen && !is_comment && has_key(line, "cli");
        // At the end of the file no other line after the list is written.
        if (services_seen && !is_comment && !begins_section && !config.goesOn()) break;
        if (!services_seen && !is_comment) services_seen = config_ensure_cli_service(line) == 0;
        config.write(line);
        if (begins_section && copy_up_to_key(config, line, "listeners") &&
            copy_up_to_key(config, line, "address"))
            config_read_cli_address(line.c_str());
    }
}

int config_prepare(const char* path) {
    FileRewrite config(path);
    if (!config.isOpen()) return 1;
    config_rewrite(config);
    const int result = server_session.out_of_memory ? 1 : config.install();
    // Of the file that has come in its place nothing is known.
    if (!leads_to(path, config.file())) server_session.cli_host[0] = '\0';
    return result;
}

char* config_key_of(const char* line) {
    constexpr size_t key_size = 256;
    auto* key = static_cast<char*>(std::calloc(key_size, 1));
    server_session.key_indent = 0;
    if (key == nullptr) server_session.out_of_memory = true;
    const char* end = std::strchr(line, '=');
    if (key == nullptr || end == nullptr) return key;
    const std::string text(line, end);
    const std::string name = without(text, " \t");
    name.copy(key, key_size - 1);
    server_session.key_indent = static_cast<unsigned>(text.size() - name.size());
    return key;
}

bool config_line_is_comment(const char* line) { return std::strchr(line, '#') != nullptr; }

int config_ensure_cli_service(std::string& line) {
    if (!has_key(line, "services")) return 1;
    const size_t from = std::strlen("services") + server_session.key_indent;
    const std::string value = line.substr(from, line.find(')', from) - from);
    // What only separates does not count.
    if (without(value, std::string("\n\0(=\t", 5)).find("cli") != std::string::npos) return 0;
    const size_t end_of_list = line.rfind(')');
    if (end_of_list != std::string::npos) line.replace(end_of_list, std::string::npos, " cli )\n");
    return 0;
}

void config_read_cli_address(const char* line) {
    const std::string text(line, std::strcspn(line, "#"));
    const size_t from = std::strlen("address") + server_session.key_indent;
    const std::string address = without(text.substr(std::min(from, text.size())), " \t=") + ":";
    const size_t colon = address.find_first_of(":\n");
    std::snprintf(server_session.cli_host, sizeof(server_session.cli_host), "%s",
                  address.substr(0, colon).c_str());
    server_session.cli_port = static_cast<std::uint16_t>(std::atoi(&address[colon + 1]));
}
