#include "config_file.h"

#include <algorithm>

#include "text.h"

namespace {

struct Setting {
    std::string key;  ///< empty on a line without "="
    std::string value;
};

Setting split_setting(const std::string& line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) return {"", line};
    Setting setting{line.substr(0, equals), trimmed(line.substr(equals + 1))};
    const auto is_space = [](char character) { return character == ' ' || character == '\t'; };
    setting.key.erase(std::remove_if(setting.key.begin(), setting.key.end(), is_space),
                      setting.key.end());
    return setting;
}

std::string without_quotes(const std::string& value) {
    const bool quoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::vector<std::string> listed_words(const std::string& value) {
    const std::size_t open = value.find('(');
    const std::size_t close = value.find(')');
    if (open == std::string::npos || close == std::string::npos || close < open) return {};
    return split_words(value.substr(open + 1, close - open - 1));
}

/// Goes through the lines and keeps the keys of the blocks that are open.
class Reader {
  public:
    explicit Reader(Config& filled) : config(filled) {}

    void read(const std::string& line) {
        const std::string text = trimmed(line.substr(0, line.find('#')));
        if (text.empty()) return;
        const Setting setting = split_setting(text);
        if (text.front() == '}' || text.front() == ')') {
            blocks.resize(std::max<std::size_t>(blocks.size(), 1) - 1);
        } else if (text.back() == '{' || text.back() == '(') {
            blocks.push_back(setting.key);
        } else if (blocks.empty()) {
            readServer(setting);
        } else {
            readSection(setting);
        }
    }

  private:
    void readServer(const Setting& setting) {
        if (setting.key == "services") {
            config.state.services = listed_words(setting.value);
        } else if (setting.key == "smtpFiltersFile") {
            config.smtp_filters = without_quotes(setting.value);
        }
    }

    void readSection(const Setting& setting) {
        const auto found = config.state.listener_services.find(service_of_section(blocks.front()));
        if (found == config.state.listener_services.end()) return;
        Service& service = found->second;
        if (setting.key == "enable" && blocks.size() == 1) {
            service.enabled = setting.value == "yes";
        } else if (setting.key == "address") {
            service.listeners.push_back(setting.value);
        }
    }

    Config& config;
    std::vector<std::string> blocks;
};

}  // namespace

Config parse_config(const std::string& text) {
    Config config;
    config.state = empty_state();
    Reader reader(config);
    for (const std::string& line : lines_of(text)) reader.read(line);
    const std::vector<std::string>& addresses = config.state.listener_services["cli"].listeners;
    config.cli_address = addresses.empty() ? "" : addresses.front();
    return config;
}
