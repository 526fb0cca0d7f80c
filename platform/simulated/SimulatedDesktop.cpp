#include "platform/simulated/SimulatedDesktop.h"

namespace platform::simulated {

SimulatedDesktop::SimulatedDesktop() {
    windowSystem.isOnActiveSpace = [this](WindowNumber window) { return spaces.isOnActiveSpace(window); };
    windowSystem.windowClosed = [this](WindowNumber window) { spaces.forgetWindow(window); };
}

}  // namespace platform::simulated
