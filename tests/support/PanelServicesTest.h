#pragma once

#include "orvellos/menu/StatusItemController.h"
#include "tests/support/ManagerTest.h"

namespace orvellos {

// A manager, and what the application's panels need, wherever they are shown.
class PanelServicesTest : public ManagerTest {
  protected:
    PanelController::Services panelServices(PanelHost& host) {
        return {.manager = manager_,
                .spaces = identifier_,
                .editingContext = editing_,
                .settings = settings_,
                .runLoop = desktop_.runLoop,
                .mouse = desktop_.mouse,
                .host = host,
                .recorder = {.registry = hotkeys_,
                             .keyNames = desktop_.keyNames,
                             .systemShortcuts = desktop_.systemShortcuts,
                             .alerts = desktop_.alerts,
                             .ownUses = noUses_},
                .permissions = permissions_,
                .about = [this] { return makeAbout(hotkeys_, "2026-03-14 09:26"); }};
    }

    StatusItemController::Services statusItemServices(PanelController& panels,
                                                      ApplicationCommands& commands) {
        return {.manager = manager_,
                .spaces = identifier_,
                .settings = settings_,
                .panels = panels,
                .runLoop = desktop_.runLoop,
                .statusItem = desktop_.statusItem,
                .hotkeys = hotkeys_,
                .commands = commands};
    }

    keyboard_shortcuts::Registry hotkeys_{
        {desktop_.defaults, desktop_.hotKeys, desktop_.keyNames, [](auto) {}}};
    PrivacyPermissions permissions_{privacyServices([] {})};

  private:
    class NoUses final : public keyboard_shortcuts::KeyUses {
        [[nodiscard]] std::optional<std::string> useOf(
            const platform::KeyEvent& /*keys*/, const keyboard_shortcuts::Name& /*name*/) const override {
            return std::nullopt;
        }
    };
    NoUses noUses_;
};

}  // namespace orvellos
