#pragma once

#include <memory>
#include <vector>

#include "orvellos/overview/MissionControlKeyObserver.h"
#include "orvellos/overview/MissionControlObserver.h"
#include "orvellos/spaces/NavController.h"
#include "orvellos/windows/ClickThroughController.h"
#include "orvellos/windows/MissionControlPreview.h"
#include "orvellos/windows/RevealController.h"
#include "orvellos/windows/SpaceBindingController.h"
#include "orvellos/windows/TagWindows.h"
#include "platform/Session.h"
#include "platform/Spaces.h"

namespace orvellos {

// Follows every event that can change what is seen of the tags, and says what each leads to. Main thread
// only.
class TagEvents final : private AnnouncingKeyListener {
  public:
    // Where the events come from.
    struct Sources {
        platform::RunLoop& runLoop;
        const platform::WindowSystem& windowSystem;
        platform::SpaceNotifications& spaceNotifications;
        platform::Screens& screens;
        platform::SessionMonitor& session;
        platform::KeyMonitor& keys;
        Settings& settings;
        EditingContext& editingContext;
    };
    // The parts that react to them.
    struct Targets {
        const SpaceIdentifier& spaces;
        TagWindows& windows;
        SpaceBindingController& binding;
        RevealController& reveal;
        Reconciler& reconciler;
        NavController& navigation;
        MissionControlObserver& missionControl;
        MissionControlPreview& preview;
        ClickThroughController& clickThrough;
    };
    TagEvents(const Sources& sources, const Targets& targets)
        : sources_(sources), targets_(targets), missionControlKey_(sources.keys, sources.runLoop) {}

    // Delivers each of the settings once, soon.
    void start();
    // Ends all of it; deliveries on their way do not arrive.
    void stop();
    // Watches the keyboard anew, for a permission that may have been given.
    void reloadKeystrokeObserver();

  private:
    template <typename Value, typename Handler>
    void receive(Value& value, Handler handler);
    void followSettings();
    void onActiveSpaceChanged();
    void followSpaceChange();
    void onScreenParametersChanged();
    void onMissionControl() override;
    void onSpaceSwitch() override;
    void followMissionControl(bool active);
    void onSwipeTransition(bool inProgress);
    void onSessionEvent(platform::SessionEvent event);
    void pausePolling();
    void resumePolling();
    [[nodiscard]] bool isSessionOnConsole() const;
    [[nodiscard]] bool mayRevealOnSwitch() const;

    Sources sources_;
    Targets targets_;
    MissionControlKeyObserver missionControlKey_;
    platform::Timer spaceChangeDebounce_;
    std::vector<platform::Subscription> subscriptions_;
    std::shared_ptr<bool> following_;  // there while deliveries that are on their way are to arrive
};

}  // namespace orvellos
