#pragma once

#include <QTest>
#include <stdexcept>

#include "tests/support/NoWindowFocus.h"
#include "tests/support/OffscreenApplication.h"
#include "tests/support/PanelServicesTest.h"
#include "ui/panels/QtPanelHost.h"

namespace orvellos {

// A running manager with the panels of the application as windows, without a screen.
class PanelsTest : public PanelServicesTest {
  protected:
    // The open panel with this title, with the keyboard.
    static QWidget& panel(const char* title) {
        for (auto* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->windowTitle() == title && QTest::qWaitForWindowActive(widget))
                return *widget;
        throw std::runtime_error(title);
    }

    desktop_test::OffscreenApplication application_;
    const platform::x11::Atoms atoms_{};  // of no server
    ui::QtMenuBar menuBar_;
    desktop_test::NoWindowFocus focus_;
    ui::QtPanelHost host_{{.atoms = atoms_,
                           .menuBar = menuBar_,
                           .screens = desktop_.screens,
                           .focus = focus_,
                           .followCompositing = [](const auto&) { return platform::Subscription(); }}};
    PanelController panels_{panelServices(host_)};
};

}  // namespace orvellos
