#pragma once

#include "platform/Processes.h"

namespace orvellos {

// Opens Mission Control as the system's own launcher does. A failure is only logged.
void launchMissionControl(platform::ApplicationLauncher& launcher);

}  // namespace orvellos
