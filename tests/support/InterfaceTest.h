#pragma once

#include "orvellos/PanelController.h"
#include "tests/support/ManagerTest.h"
#include "tests/support/SimulatedPanelHost.h"

namespace orvellos {

// A running manager with the panels of the application.
class InterfaceTest : public ManagerTest {
  protected:
    InterfaceTest() { start(); }

    SimulatedPanelHost host_;
    keyboard_shortcuts::Registry hotkeys_{
        {desktop_.defaults, desktop_.hotKeys, desktop_.keyNames, [](auto) {}}};
    PrivacyPermissions permissions_{privacyServices([] {})};
    PanelController panels_{{manager_,
                             identifier_,
                             editing_,
                             settings_,
                             desktop_.runLoop,
                             desktop_.mouse,
                             host_,
                             {hotkeys_, desktop_.keyNames, desktop_.systemShortcuts, desktop_.alerts,
                              [](const auto&, const auto&) { return std::nullopt; }},
                             permissions_,
                             [this] { return makeAbout(hotkeys_, "2026-03-14 09:26"); }}};
};

}  // namespace orvellos
