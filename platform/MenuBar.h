#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/StatusItem.h"

namespace platform {

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
