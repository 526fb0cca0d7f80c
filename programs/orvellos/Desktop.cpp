#include "programs/orvellos/Desktop.h"

#include "platform/freedesktop/ProgramLocations.h"

namespace {

// The main thread never waits longer for the display server than a frame lasts.
constexpr auto kPatienceWhileRunning = std::chrono::milliseconds(16);

}  // namespace
