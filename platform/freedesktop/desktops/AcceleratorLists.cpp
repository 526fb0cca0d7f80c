#include "platform/freedesktop/desktops/AcceleratorLists.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "platform/Text.h"

namespace platform::freedesktop {

namespace {

// "left_workspace_key" and "switch-windows" as a user would write them.
std::string asWords(std::string_view name) {
    if (name.ends_with("_key")) name.remove_suffix(4);
    std::string words(name);
    std::ranges::replace_if(
        words, [](char letter) { return letter == '-' || letter == '_'; }, ' ');
    if (!words.empty()) words[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(words[0])));
    return words;
}

bool isPair(const BusArguments& property) {
    return property.is_array() && property.size() == 2 && property[0].is_string();
}

bool hasOwnList(const BusArguments& properties, const std::string& group) {
    return std::ranges::any_of(properties, [&](const BusArguments& property) {
        return isPair(property) && property[0] == "/" + group + "/custom/override" &&
               property[1].is_boolean() && property[1].get<bool>();
    });
}

void appendGroup(const BusArguments& properties, const std::string& group, bool areCommands,
                 std::vector<Accelerator>& found) {
    const auto prefix = "/" + group + (hasOwnList(properties, group) ? "/custom/" : "/default/");
    for (const auto& property : properties) {
        if (!isPair(property) || !property[1].is_string()) continue;
        const auto path = property[0].get<std::string>();
        if (!path.starts_with(prefix)) continue;
        const auto action = property[1].get<std::string>();
        found.push_back({path.substr(prefix.size()), action, areCommands ? action : asWords(action)});
    }
}

// The texts between single quotes.
void appendQuoted(std::string_view value, const std::string& name, std::vector<Accelerator>& found) {
    for (;;) {
        const auto begin = value.find('\'');
        const auto end = begin == std::string_view::npos ? begin : value.find('\'', begin + 1);
        if (end == std::string_view::npos) return;
        found.push_back({std::string(value.substr(begin + 1, end - begin - 1)), name, asWords(name)});
        value.remove_prefix(end + 1);
    }
}

}  // namespace

std::vector<Accelerator> acceleratorsOfXfce(const BusArguments& properties) {
    std::vector<Accelerator> found;
    if (!properties.is_array()) return found;
    appendGroup(properties, "xfwm4", false, found);
    appendGroup(properties, "commands", true, found);
    return found;
}

std::vector<Accelerator> acceleratorsOfGsettings(std::string_view output) {
    std::vector<Accelerator> found;
    for (const auto line : split(output, '\n')) {
        const auto name = line.find(' ');
        const auto value = name == std::string_view::npos ? name : line.find(' ', name + 1);
        if (value == std::string_view::npos) continue;
        appendQuoted(line.substr(value), std::string(line.substr(name + 1, value - name - 1)), found);
    }
    return found;
}

}  // namespace platform::freedesktop
