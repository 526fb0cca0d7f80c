#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "orvellos/Settings.h"

namespace orvellos {

// The rows of the settings window. A footnote stands under its control; what is between two asterisks each is
// emphasised. An empty footnote is none.

// One of a few choices.
struct PickerRow {
    std::string title;
    std::vector<std::string> options;
    std::function<std::optional<std::size_t>()> selected;  // absent when none of them is
    std::function<void(std::size_t)> choose;
    std::string footnote;
};
// On or off.
struct ToggleRow {
    std::string title;
    std::function<bool()> isOn;
    std::function<void(bool)> set;
    std::string footnote;
};
// What stands above the rows that follow in the same section.
struct GroupTitle {
    std::string title;
};
struct TextRow {
    std::string text;
};
using SettingsRow = std::variant<PickerRow, ToggleRow, GroupTitle, TextRow>;

struct SettingsSection {
    std::string title;
    std::vector<SettingsRow> rows;
};

// What the settings window says and does. Every control writes its setting at once.
class SettingsForm {
  public:
    // The settings outlive the form.
    explicit SettingsForm(Settings& settings);

    [[nodiscard]] const std::vector<SettingsSection>& sections() const { return sections_; }
    // Called whenever a control may have to show something else.
    platform::Subscription subscribe(std::function<void()> callback) const {
        return settings_.subscribe(std::move(callback));
    }

  private:
    Settings& settings_;
    std::vector<SettingsSection> sections_;
};

}  // namespace orvellos
