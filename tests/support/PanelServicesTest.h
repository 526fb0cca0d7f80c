#pragma once

#include "orvellos/panels/PanelController.h"
#include "tests/support/ManagerTest.h"

namespace orvellos {

// A manager, and what the application's panels need, wherever they are shown.
class PanelServicesTest : public ManagerTest {
  protected:
    PanelController::Services panelServices(PanelHost& host) {
        return {manager_,
                identifier_,
                editing_,
                settings_,
                desktop_.runLoop,
                desktop_.mouse,
                host,
                {hotkeys_, desktop_.keyNames, desktop_.systemShortcuts, desktop_.alerts,
                 [](const auto&, const auto&) { return std::nullopt; }},
                permissions_,
                [this] { return makeAbout(hotkeys_, "2026-03-14 09:26"); }};
    }

    keyboard_shortcuts::Registry hotkeys_{
        {desktop_.defaults, desktop_.hotKeys, desktop_.keyNames, [](auto) {}}};
    PrivacyPermissions permissions_{privacyServices([] {})};
};

}  // namespace orvellos
