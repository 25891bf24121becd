#include "apply/server_config.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>

#include "apply/named_file.h"
#include "apply/working_copy.h"
#include "wizard/base/heap_text.h"

char cli_host[256];
std::uint16_t cli_port = 0;
unsigned config_key_indent = 0;

namespace {

bool is_blank(char character) {
    return character == ' ' || character == '\t';
}

bool has_key(const char* line, const char* key) {
    return std::strcmp(HeapText(config_key_of(line)).get(), key) == 0;
}

// The text between the key and the first ")", without what only separates.
std::string collect_services(const FileLine& line) {
    const HeapText key(config_key_of(line.text));
    std::string services;
    for (size_t i = std::strlen(key.get()) + config_key_indent;
         i < line.length && line.text[i] != ')'; ++i) {
        // The terminator of this text counts: zero bytes only separate too.
        if (std::memchr("\n(=\t", line.text[i], sizeof("\n(=\t")) == nullptr)
            services += line.text[i];
    }
    return services;
}

// Copies lines up to and including the first one that has this key, which a commented line has not,
// as its key begins with the "#". Returns false when the file ends before.
bool copy_up_to_key(std::FILE* config, std::FILE* copy, FileLine& line, const char* key) {
    while (read_file_line(config, line)) {
        write_file_line(copy, line);
        if (has_key(line.text, key))
            return true;
    }
    return false;
}

// Copies one line from behind the list of services. Returns false at the end of the file.
bool copy_section_line(std::FILE* config, std::FILE* copy, FileLine& line) {
    if (config_line_is_comment(line.text)) {
        write_file_line(copy, line);
    } else if (has_key(line.text, "cli")) {
        write_file_line(copy, line);
        if (copy_up_to_key(config, copy, line, "listeners") &&
            copy_up_to_key(config, copy, line, "address"))
            config_read_cli_address(line.text);
    } else if (std::feof(config) != 0) {
        return false;
    } else {
        write_file_line(copy, line);
    }
    return true;
}

void copy_config(std::FILE* config, std::FILE* copy) {
    FileLine line;
    bool services_seen = false;
    // A read that fails at the end of the file leaves the last line in place, to be looked at once
    // more.
    while (std::feof(config) == 0 && std::ferror(config) == 0) {
        read_file_line(config, line);
        if (services_seen) {
            if (!copy_section_line(config, copy, line))
                break;
            continue;
        }
        if (!config_line_is_comment(line.text) && config_ensure_cli_service(line) == 0)
            services_seen = true;
        write_file_line(copy, line);
    }
}

void forget_cli_address() {
    cli_host[0] = '\0';
    cli_port = 0;
}

}  // namespace

int config_prepare(const char* path) {
    std::FILE* config = open_original(path);
    if (config == nullptr)
        return 1;
    std::FILE* copy = working_copy_open();
    if (copy == nullptr) {
        std::fclose(config);
        return 1;
    }
    copy_config(config, copy);
    const int result = working_copy_install(copy, config, path);
    // Of the file that has come in its place nothing is known.
    if (!leads_to(path, fileno(config)))
        forget_cli_address();
    std::fclose(config);
    return result;
}

char* config_key_of(const char* line) {
    constexpr size_t key_size = 256;
    auto* key = static_cast<char*>(std::calloc(key_size, 1));
    if (key == nullptr)
        std::exit(0);
    config_key_indent = 0;
    const char* end = std::strchr(line, '=');
    if (end == nullptr)
        return key;
    size_t length = 0;
    for (; line != end; ++line) {
        if (is_blank(*line))
            ++config_key_indent;
        else if (length + 1 < key_size)
            key[length++] = *line;
    }
    return key;
}

bool config_line_is_comment(const char* line) {
    return std::strchr(line, '#') != nullptr;
}

int config_ensure_cli_service(FileLine& line) {
    if (!has_key(line.text, "services"))
        return 1;
    if (collect_services(line).find("cli") != std::string::npos)
        return 0;
    const auto end_of_list = std::string(line.text, line.length).rfind(')');
    if (end_of_list != std::string::npos) {
        static const char with_cli[] = " cli )\n";
        std::copy(std::begin(with_cli), std::end(with_cli), line.text + end_of_list);
        line.length = end_of_list + std::strlen(with_cli);
    }
    return 0;
}

void config_read_cli_address(const char* line) {
    constexpr size_t key_length = 7;  // of "address"
    const size_t from = config_key_indent + key_length;
    std::string address;
    const size_t end = std::strcspn(line, "#");
    for (size_t i = from; i < end; ++i) {
        if (!is_blank(line[i]) && line[i] != '=')
            address += line[i];
    }
    const size_t colon = address.find_first_of(":\n");
    std::snprintf(cli_host, sizeof(cli_host), "%s", address.substr(0, colon).c_str());
    cli_port = 0;
    if (colon != std::string::npos)
        cli_port = static_cast<std::uint16_t>(std::atoi(address.c_str() + colon + 1));
}
