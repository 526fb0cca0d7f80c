#include "orvellos/overview/MissionControlKeyObserver.h"

#include <fmt/format.h>

#include <utility>

#include "orvellos/base/DebugLog.h"

namespace orvellos {

namespace {

namespace key = platform::key;
namespace modifier = platform::modifier;

constexpr std::uint64_t kAllModifiers = ~std::uint64_t{0xFFFF};

bool opensMissionControl(const platform::KeyEvent& event) {
    return event.keyCode == key::kMissionControl ||
           (event.keyCode == key::kUpArrow && (event.modifierFlags & modifier::kControl) != 0) ||
           (event.keyCode == key::kF3 && (event.modifierFlags & kAllModifiers) == 0);
}

bool switchesSpace(const platform::KeyEvent& event) {
    const bool isArrow = event.keyCode == key::kLeftArrow || event.keyCode == key::kRightArrow;
    return isArrow && (event.modifierFlags & (modifier::kControl | modifier::kCommand)) == modifier::kControl;
}

void logKey(std::string_view what, const platform::KeyEvent& event) {
    logVerbose("MissionControlKeyObserver: {} (code={})", what, event.keyCode);
}

}  // namespace

AnnouncingKey classifyKey(const platform::KeyEvent& event) {
    if (opensMissionControl(event)) return AnnouncingKey::MissionControl;
    return switchesSpace(event) ? AnnouncingKey::SpaceSwitch : AnnouncingKey::None;
}

void MissionControlKeyObserver::start(std::function<void()> onMissionControl,
                                      std::function<void()> onSpaceSwitch) {
    callbacks_ =
        std::make_shared<const Callbacks>(Callbacks{std::move(onMissionControl), std::move(onSpaceSwitch)});
    monitor_ = keys_.addGlobalKeyDownMonitor(
        [this, weak = std::weak_ptr(callbacks_)](const platform::KeyEvent& event) {
            runLoop_.post([weak, event] {
                if (const auto callbacks = weak.lock()) callbacks->handle(event);
            });
        });
}

// A key that waits in the main queue is not reported any more.
void MissionControlKeyObserver::stop() {
    monitor_.cancel();
    callbacks_.reset();
}

void MissionControlKeyObserver::Callbacks::handle(const platform::KeyEvent& event) const {
    const auto kind = classifyKey(event);
    if (kind == AnnouncingKey::MissionControl) {
        logKey("MC keystroke detected", event);
        log(LogCategory::Mc, fmt::format("KEY: MC keystroke detected (code={})", event.keyCode));
        onMissionControl();
    } else if (kind == AnnouncingKey::SpaceSwitch) {
        logKey("space-switch keystroke", event);
        onSpaceSwitch();
    }
}

}  // namespace orvellos
