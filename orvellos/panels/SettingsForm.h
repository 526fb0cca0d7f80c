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

// The rows of the settings window. A footnote stands under its control; an empty one is none. In texts, what
// is between two asterisks each is emphasised and what is between two backticks is a name of the system's.

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
// The keys of an action. The form owns the recorder.
struct ShortcutRow {
    std::string title;
    keyboard_shortcuts::Recorder* recorder = nullptr;
};
// Stands there for as long as it is true.
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

// What the settings window says and does. Every control writes its setting at once. While the form is there
// the permissions are looked at again and again.
class SettingsForm {
  public:
    // What is passed outlives the form.
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
    // Called whenever a control may have to show something else. Recorders tell of themselves.
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
