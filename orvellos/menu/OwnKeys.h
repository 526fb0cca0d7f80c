#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "KeyboardShortcuts/Recorder.h"
#include "KeyboardShortcuts/Registry.h"
#include "platform/Menus.h"

namespace orvellos {

// The application menu and the "Edit" menu.
[[nodiscard]] std::vector<platform::MainMenu> mainMenu(std::function<void()> terminate);

// The keys that the application itself uses: its hotkeys and those of its menus.
class OwnKeys final : public keyboard_shortcuts::KeyUses {
  public:
    struct Services {
        const keyboard_shortcuts::Registry& hotkeys;
        const platform::KeyNames& keyNames;
        const platform::MenuBar& menuBar;
        std::function<std::vector<platform::MenuItem>()> statusMenu;
    };
    explicit OwnKeys(Services services) : services_(std::move(services)) {}

    [[nodiscard]] std::optional<std::string> useOf(const platform::KeyEvent& keys,
                                                   const keyboard_shortcuts::Name& name) const override;

  private:
    Services services_;
};

}  // namespace orvellos
