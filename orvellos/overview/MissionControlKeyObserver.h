#pragma once

#include <memory>

#include "platform/Keys.h"
#include "platform/RunLoop.h"

namespace orvellos {

// A key, pressed in any program, that announces something for which tags prepare.
enum class AnnouncingKey { None, MissionControl, SpaceSwitch };
[[nodiscard]] AnnouncingKey classifyKey(const platform::KeyEvent& event);

// Hears of the keys that a MissionControlKeyObserver watches for.
class AnnouncingKeyListener {
  public:
    virtual ~AnnouncingKeyListener() = default;

    virtual void onMissionControl() = 0;
    virtual void onSpaceSwitch() = 0;
};

// Watches the keyboard for the keys that open Mission Control or switch the Space. Main thread only.
class MissionControlKeyObserver {
  public:
    MissionControlKeyObserver(platform::KeyMonitor& keys, platform::RunLoop& runLoop)
        : keys_(keys), runLoop_(runLoop) {}

    // Tells this listener instead of any earlier one, from the main queue, after the key event has been
    // handled.
    void start(AnnouncingKeyListener& listener);
    // A key that waits in the main queue is not reported any more.
    void stop();

  private:
    platform::KeyMonitor& keys_;
    platform::RunLoop& runLoop_;
    std::shared_ptr<AnnouncingKeyListener*> listener_;  // there while it is to be told
    platform::Subscription monitor_;
};

}  // namespace orvellos
