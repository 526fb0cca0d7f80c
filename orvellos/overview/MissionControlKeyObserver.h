#pragma once

#include <functional>
#include <memory>

#include "platform/Keys.h"
#include "platform/RunLoop.h"

namespace orvellos {

// Which of the keys that are pressed in other programs announce something that tags prepare for.
enum class AnnouncingKey { None, MissionControl, SpaceSwitch };
[[nodiscard]] AnnouncingKey classifyKey(const platform::KeyEvent& event);

// Watches the keyboard for the keys that open Mission Control or switch the Space. Main thread only.
class MissionControlKeyObserver {
  public:
    MissionControlKeyObserver(platform::KeyMonitor& keys, platform::RunLoop& runLoop)
        : keys_(keys), runLoop_(runLoop) {}

    // Watches with these callbacks instead of any earlier ones. They are called from the main queue, after
    // the key event has been handled.
    void start(std::function<void()> onMissionControl, std::function<void()> onSpaceSwitch);
    void stop();

  private:
    struct Callbacks {
        std::function<void()> onMissionControl;
        std::function<void()> onSpaceSwitch;

        void handle(const platform::KeyEvent& event) const;
    };

    platform::KeyMonitor& keys_;
    platform::RunLoop& runLoop_;
    std::shared_ptr<const Callbacks> callbacks_;
    platform::Subscription monitor_;
};

}  // namespace orvellos
