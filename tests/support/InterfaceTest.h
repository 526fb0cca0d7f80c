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
    PanelController panels_{{manager_, identifier_, editing_, desktop_.runLoop, desktop_.mouse, host_}};
};

}  // namespace orvellos
