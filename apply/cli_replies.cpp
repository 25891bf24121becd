#include "apply/cli_replies.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "apply/cli_session.h"
#include "apply/cli_wire.h"
#include "wizard/base/heap_text.h"

namespace {

constexpr size_t reply_text_size = 512;
constexpr size_t most_listeners = 10;

bool contains(const HeapText& line, const char* part) {
    return std::strstr(line.get(), part) != nullptr;
}

std::string first_word(const char* text) {
    text += std::strspn(text, " ");
    return {text, std::strcspn(text, " ")};
}

// What a list command's reply says.
struct ListenerTable {
    std::vector<std::string> addresses;
    bool succeeded = false;
    bool complete = false;
};

ListenerTable read_listener_table() {
    ListenerTable table;
    bool in_rows = false;
    while (!table.complete) {
        const HeapText line(cli_read_line(cli_socket));
        if (line == nullptr)
            return table;
        if (in_rows && contains(line, "|")) {
            if (table.addresses.size() < most_listeners)
                table.addresses.push_back(first_word(line.get()));
            continue;
        }
        in_rows = contains(line, "-----");
        table.succeeded = table.succeeded || contains(line, "+OK:");
        table.complete = contains(line, "> ");
    }
    return table;
}

// The list that the wizard's listener services are added to.
const char* base_services(const std::string& listed) {
    return listed.find("log") != std::string::npos
               ? "log smtpIncoming smtpOutgoing processing webadmin cli"
               : "smtpIncoming smtpOutgoing processing webadmin cli";
}

// The text between the first `open` and the `close` behind it; to the end where that is missing.
std::string text_between(const std::string& line, char open, char close) {
    const size_t from = line.find(open);
    if (from == std::string::npos)
        return "";
    return line.substr(from + 1, line.find(close, from + 1) - from - 1);
}

HeapText reply_text() {
    return HeapText(static_cast<char*>(std::calloc(reply_text_size, 1)));
}

// True when the line shows the attribute, whose value begins with `open`. A line that only names it
// takes nothing back of the value that was `found` before.
bool shows_attribute(const HeapText& line, const char* name, char open, const HeapText& found) {
    return contains(line, name) &&
           (found.get()[0] == '\0' || std::strchr(line.get(), open) != nullptr);
}

}  // namespace

int cli_reset_listeners(const char* list_command) {
    if (cli_send_line(cli_socket, list_command) != 0)
        return 1;
    const ListenerTable table = read_listener_table();
    if (!table.complete)
        return 1;
    for (const std::string& address : table.addresses) {
        if (cli_command_format("remove listener address %s", address.c_str()) != 0)
            return 1;
    }
    if (cli_command("commit") != 0)
        return 1;
    return table.succeeded ? 0 : 1;
}

char* cli_read_services(const char* command) {
    if (cli_send_line(cli_socket, command) != 0)
        return nullptr;
    HeapText services = reply_text();
    bool succeeded = false;
    for (bool at_prompt = false; !at_prompt;) {
        const HeapText line(cli_read_line(cli_socket));
        if (line == nullptr)
            return nullptr;
        if (shows_attribute(line, "services", '(', services))
            std::snprintf(services.get(), reply_text_size, "%s",
                          base_services(text_between(line.get(), '(', ')')));
        succeeded = succeeded || contains(line, "OK:");
        at_prompt = contains(line, ">");
    }
    // To set an empty list would switch off the command-line interface itself.
    const bool listed = services.get()[0] != '\0';
    return succeeded && listed ? services.release() : nullptr;
}

char* cli_read_filters_file(const char* command) {
    if (cli_send_line(cli_socket, command) != 0)
        return nullptr;
    HeapText path = reply_text();
    for (bool at_prompt = false; !at_prompt;) {
        const HeapText line(cli_read_line(cli_socket));
        if (line == nullptr)
            return nullptr;
        if (shows_attribute(line, "smtpFiltersFile", '"', path)) {
            std::string value = text_between(line.get(), '"', '"');
            value.erase(std::remove(value.begin(), value.end(), ' '), value.end());
            std::snprintf(path.get(), reply_text_size, "%s", value.c_str());
        }
        at_prompt = contains(line, ">");
    }
    return path.release();
}
