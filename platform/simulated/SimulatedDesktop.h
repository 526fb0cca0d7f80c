#pragma once

#include "platform/simulated/SimulatedFiles.h"
#include "platform/simulated/SimulatedKeys.h"
#include "platform/simulated/SimulatedProcesses.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedScreens.h"
#include "platform/simulated/SimulatedSession.h"
#include "platform/simulated/SimulatedSpaces.h"
#include "platform/simulated/SimulatedSystem.h"
#include "platform/simulated/SimulatedUserInterface.h"
#include "platform/simulated/SimulatedWindowList.h"
#include "platform/simulated/SimulatedWindowSystem.h"

namespace platform::simulated {

// A whole desktop in memory, with neither screens nor Spaces at the start. Its parts know of each other what
// those of a real one do: a window is on the active Space when the Spaces say so, and is gone from its Space
// once it is closed.
struct SimulatedDesktop {
    SimulatedDesktop();
    SimulatedDesktop(const SimulatedDesktop&) = delete;
    SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;

    SimulatedRunLoop runLoop;
    SimulatedScreens screens{runLoop};
    SimulatedSpaces spaces{runLoop};
    SimulatedWindowSystem windowSystem;
    SimulatedTextMeasurer textMeasurer;
    SimulatedWindowList windowList;
    SimulatedOverview overview;
    SimulatedKeyboard keyboard;
    SimulatedHotKeys hotKeys;
    SimulatedKeyNames keyNames;
    SimulatedSystemShortcuts systemShortcuts{runLoop};
    SimulatedSession session;
    SimulatedApplications applications;
    SimulatedFileSystem files;
    SimulatedFolders folders;
    SimulatedFileBrowser fileBrowser;
    SimulatedDefaultsStore defaults;
    SimulatedLoginItem loginItem;
    SimulatedChildProcesses childProcesses;
    SimulatedShortcuts shortcuts;
    SimulatedPermissions permissions;
    SimulatedAlerts alerts;
    SimulatedUrlOpener urls;
    SimulatedMouse mouse;
    SimulatedStatusItem statusItem;
    SimulatedMenuBar menuBar;
    SimulatedUpdates updates;
    SimulatedSystemInformation system;
    SimulatedSystemLog systemLog;
};

}  // namespace platform::simulated
