#pragma once

#include "platform/simulated/SimulatedApplications.h"
#include "platform/simulated/SimulatedChildProcesses.h"
#include "platform/simulated/SimulatedDefaultsStore.h"
#include "platform/simulated/SimulatedFileBrowser.h"
#include "platform/simulated/SimulatedFileSystem.h"
#include "platform/simulated/SimulatedFolders.h"
#include "platform/simulated/SimulatedKeyboard.h"
#include "platform/simulated/SimulatedLoginItem.h"
#include "platform/simulated/SimulatedNavigation.h"
#include "platform/simulated/SimulatedOverview.h"
#include "platform/simulated/SimulatedPermissions.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedScreens.h"
#include "platform/simulated/SimulatedSession.h"
#include "platform/simulated/SimulatedSpaces.h"
#include "platform/simulated/SimulatedSystemInformation.h"
#include "platform/simulated/SimulatedSystemLog.h"
#include "platform/simulated/SimulatedSystemShortcuts.h"
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
