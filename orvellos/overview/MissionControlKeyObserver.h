#pragma once

#include <memory>

#include "platform/Keys.h"
#include "platform/RunLoop.h"

namespace orvellos {

// Which of the keys that are pressed in other programs announce something that tags prepare for.
enum class AnnouncingKey { None, MissionControl, SpaceSwitch };
[[nodiscard]] AnnouncingKey classifyKey(const platform::KeyEvent& event);

// Is told of those keys.
class AnnouncingKeyListener {
  public:
    virtual ~AnnouncingKeyListener() = default;

    virtual void onMissionControlKeystroke() = 0;
    virtual void onSpaceSwitchKeystroke() = 0;
};

// Watches the keyboard for the keys that open Mission Control or switch the Space. Main thread only.
class MissionControlKeyObserver {
  public:
    MissionControlKeyObserver(platform::KeyMonitor& keys, platform::RunLoop& runLoop)
        : keys_(keys), runLoop_(runLoop) {}

    // Tells this listener instead of any earlier one, from the main queue, after the key event has been
    // handled.
    void start(AnnouncingKeyListener& listener);
    // Ends with what waits in the main queue.
    void stop();

  private:
    platform::KeyMonitor& keys_;
    platform::RunLoop& runLoop_;
    std::shared_ptr<AnnouncingKeyListener*> listener_;  // there while it is to be told
    platform::Subscription monitor_;
};

}  // namespace orvellos
