#include "tests/support/environment.h"

#include <unistd.h>

std::vector<std::string> changed_environment(const EnvironmentChanges& changes) {
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        if (changes.count(text.substr(0, text.find('='))) == 0)
            variables.push_back(text);
    }
    for (const auto& [name, value] : changes) {
        if (value)
            variables.push_back(name + "=" + *value);
    }
    return variables;
}

std::vector<char*> exec_array(std::vector<std::string>& strings) {
    std::vector<char*> pointers;
    pointers.reserve(strings.size() + 1);
    for (std::string& text : strings)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}
