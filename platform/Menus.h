#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/Geometry.h"
#include "platform/Keys.h"

namespace platform {

// A key that stands for a menu item.
struct KeyEquivalent {
    char key = 0;  // what it types without modifiers
    std::uint64_t modifierFlags = 0;
    bool operator==(const KeyEquivalent&) const = default;
};

// One row of a menu. A row without an action cannot be chosen.
struct MenuItem {
    enum class Kind { Item, Separator, Fineprint };  // the last in a small, faint, monospaced font

    Kind kind = Kind::Item;
    std::string title = {};
    std::function<void()> action = {};
    bool checked = false;
    std::string symbol = {};        // a system symbol's name
    std::optional<Color> dot = {};  // a filled circle
    bool hasFaintDot = false;       // one in the secondary label colour at alpha 0.25
    std::string toolTip = {};
    std::optional<KeyEquivalent> keyEquivalent = {};
    bool isAlternate = false;  // shown instead of the row before while Option is held
};

// What stands beside the status item's icon; nothing when it has neither part.
struct StatusTitle {
    struct Label {
        Color dot;
        std::string text;
        bool operator==(const Label&) const = default;
    };
    bool hasHiddenSymbol = false;  // "eye.slash"
    std::optional<Label> label;
    bool operator==(const StatusTitle&) const = default;
};

// The application's place in the desktop's bar: its icon, beside it a title, and a menu.
class StatusItem {
  public:
    virtual ~StatusItem() = default;

    virtual void setTitle(const StatusTitle& title) = 0;
    // `menuNeedsUpdate` gives the rows each time the menu is about to open.
    virtual void setMenu(std::function<std::vector<MenuItem>()> menuNeedsUpdate) = 0;
};

// What a text field does with its text.
enum class EditAction { Undo, Redo, Cut, Copy, Paste, SelectAll };

struct MainMenuItem {
    std::string title;
    // An edit action goes to whichever text field has the keyboard.
    std::variant<EditAction, std::function<void()>> action;
    KeyEquivalent keyEquivalent;
};
struct MainMenu {
    std::string title;
    std::vector<MainMenuItem> items;
};

// The menus whose keys work in every panel of the application, whether or not they can be seen.
class MenuBar {
  public:
    virtual ~MenuBar() = default;
    virtual void setMainMenu(std::vector<MainMenu> menus) = 0;
    // Whether a key that types `text` without modifiers, with these, chooses a menu item of that equivalent
    // on this desktop.
    [[nodiscard]] virtual bool isChosenBy(const KeyEquivalent& equivalent, std::string_view text,
                                          std::uint64_t modifierFlags) const = 0;
};

}  // namespace platform
