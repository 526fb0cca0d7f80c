#include "orvellos/overview/MissionControlKeyObserver.h"

#include <fmt/format.h>

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

void report(const platform::KeyEvent& event, AnnouncingKeyListener& listener) {
    const auto kind = classifyKey(event);
    if (kind == AnnouncingKey::MissionControl) {
        logKey("MC keystroke detected", event);
        log(LogCategory::Mc, fmt::format("KEY: MC keystroke detected (code={})", event.keyCode));
        listener.onMissionControl();
    } else if (kind == AnnouncingKey::SpaceSwitch) {
        logKey("space-switch keystroke", event);
        listener.onSpaceSwitch();
    }
}

}  // namespace

AnnouncingKey classifyKey(const platform::KeyEvent& event) {
    if (opensMissionControl(event)) return AnnouncingKey::MissionControl;
    return switchesSpace(event) ? AnnouncingKey::SpaceSwitch : AnnouncingKey::None;
}

void MissionControlKeyObserver::start(AnnouncingKeyListener& listener) {
    listener_ = std::make_shared<AnnouncingKeyListener*>(&listener);
    monitor_ = keys_.addGlobalKeyDownMonitor(
        [this, weak = std::weak_ptr(listener_)](const platform::KeyEvent& event) {
            runLoop_.post([weak, event] {
                if (const auto told = weak.lock()) report(event, **told);
            });
        });
}

void MissionControlKeyObserver::stop() {
    monitor_.cancel();
    listener_.reset();
}

}  // namespace orvellos
