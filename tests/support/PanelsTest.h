#pragma once

#include <QTest>
#include <stdexcept>

#include "orvellos/PanelController.h"
#include "tests/support/ManagerTest.h"
#include "tests/support/OffscreenApplication.h"
#include "ui/QtPanelHost.h"

namespace orvellos {

// A running manager with the panels of the application as windows, without a screen.
class PanelsTest : public ManagerTest {
  protected:
    // The open panel with this title, with the keyboard.
    static QWidget& panel(const char* title) {
        for (auto* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->windowTitle() == title && QTest::qWaitForWindowActive(widget))
                return *widget;
        throw std::runtime_error(title);
    }

    desktop_test::OffscreenApplication application_;
    keyboard_shortcuts::Registry hotkeys_{
        {desktop_.defaults, desktop_.hotKeys, desktop_.keyNames, [](auto) {}}};
    PrivacyPermissions permissions_{privacyServices([] {})};
    ui::QtMenuBar menuBar_;
    ui::QtPanelHost host_{
        {menuBar_, desktop_.screens, [](auto) {}, [](const auto&) { return platform::Subscription(); }}};
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
