#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "KeyboardShortcuts/Recorder.h"
#include "orvellos/permissions/PermissionRow.h"
#include "orvellos/settings/Settings.h"

namespace orvellos {

// The rows of the settings window. A footnote stands under its control; an empty one is none. In texts, **two
// asterisks** enclose emphasised words and `backticks` names of the system's.

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
// A heading above the rows that follow in the same section.
struct GroupTitle {
    std::string title;
};
struct TextRow {
    std::string text;
};
// The keys of an action. The form owns the recorder.
struct ShortcutRow {
    std::string title;
    keyboard_shortcuts::Recorder* recorder = nullptr;
};
// A warning, shown as long as it applies.
struct WarningRow {
    static constexpr const char* kSymbol = "exclamationmark.triangle.fill";

    std::string title;
    std::string text;
    std::function<bool()> isShown;
};
// Buttons beside each other.
struct ButtonsRow {
    struct Button {
        std::string title;
        std::function<void()> action;
    };
    std::vector<Button> buttons;
};
using SettingsRow = std::variant<PickerRow, ToggleRow, GroupTitle, TextRow, ShortcutRow, PermissionRow,
                                 WarningRow, ButtonsRow>;

struct SettingsSection {
    std::string title;
    std::vector<SettingsRow> rows;
};

// The texts and the operations of the settings window. Every control writes its setting at once. The
// permissions are refreshed as long as the form exists.
class SettingsForm {
  public:
    struct Services {
        Settings& settings;
        keyboard_shortcuts::Recorder::Services recorder;
        PermissionsState::Services permissions;
        std::function<bool()> areSpaceShortcutsEnabled;
    };
    explicit SettingsForm(Services services);
    SettingsForm(const SettingsForm&) = delete;
    SettingsForm& operator=(const SettingsForm&) = delete;

    [[nodiscard]] const std::vector<SettingsSection>& sections() const { return sections_; }
    // Called whenever a control may have to show something else. A recorder has subscribers of its own.
    platform::Subscription subscribe(std::function<void()> callback) {
        return changed_.subscribe(std::move(callback));
    }

  private:
    [[nodiscard]] SettingsSection shortcuts();
    [[nodiscard]] SettingsSection permissions();

    Services services_;
    PermissionsState permissionsState_;
    std::vector<std::unique_ptr<keyboard_shortcuts::Recorder>> recorders_;
    std::vector<SettingsSection> sections_;
    Observers<> changed_;
    std::vector<platform::Subscription> changes_;
};

}  // namespace orvellos
