#pragma once

#include "orvellos/windows/TagManager.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace orvellos {

// The services of the application's parts, from a simulated desktop.

inline NavServices simulatedNavServices(platform::simulated::SimulatedDesktop& desktop) {
    return {.processes = desktop.childProcesses,
            .shortcuts = desktop.shortcuts,
            .permissions = desktop.permissions,
            .alerts = desktop.alerts,
            .urls = desktop.urls};
}

inline TagWindowServices simulatedWindowServices(platform::simulated::SimulatedDesktop& desktop,
                                                 Settings& settings, EditingContext& editing) {
    return {.windowSystem = desktop.windowSystem,
            .runLoop = desktop.runLoop,
            .screens = desktop.screens,
            .textMeasurer = desktop.textMeasurer,
            .settings = settings,
            .editingContext = editing};
}

inline TagManager::Services simulatedManagerServices(platform::simulated::SimulatedDesktop& desktop,
                                                     Settings& settings, EditingContext& editing,
                                                     const SpaceIdentifier& spaces) {
    return {.windows = simulatedWindowServices(desktop, settings, editing),
            .spaces = spaces,
            .spaceNotifications = desktop.spaces,
            .screens = desktop.screens,
            .onScreenWindows = desktop.overview,
            .keys = desktop.keyboard,
            .session = desktop.session,
            .launcher = desktop.applications,
            .navigation = simulatedNavServices(desktop)};
}

}  // namespace orvellos
