#pragma once

#include "tests/support/PanelServicesTest.h"
#include "tests/support/SimulatedPanelHost.h"

namespace orvellos {

// A running manager with the panels of the application.
class InterfaceTest : public PanelServicesTest {
  protected:
    InterfaceTest() { start(); }

    SimulatedPanelHost host_;
    PanelController panels_{panelServices(host_)};
};

}  // namespace orvellos
