#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "orvellos/overview/MissionControlKeyObserver.h"
#include "orvellos/overview/MissionControlObserver.h"
#include "orvellos/spaces/NavController.h"
#include "orvellos/tags/TagStore.h"
#include "orvellos/windows/ClickThroughController.h"
#include "orvellos/windows/MenuSpaceRow.h"
#include "orvellos/windows/PositionController.h"
#include "orvellos/windows/RevealController.h"
#include "orvellos/windows/SpaceBindingController.h"
#include "orvellos/windows/TagVisibility.h"
#include "orvellos/windows/TagWindow.h"
#include "platform/Processes.h"
#include "platform/Session.h"
#include "platform/Spaces.h"

namespace orvellos {

// Owns the tags, their windows and the controllers that act on them. Answers every event with the same step,
// `reconcile`, which decides what of each tag is seen. Main thread only.
class TagManager {
  public:
    struct Services {
        TagWindowServices windows;
        const SpaceIdentifier& spaces;
        platform::SpaceNotifications& spaceNotifications;
        platform::Screens& screens;
        platform::OnScreenWindows& onScreenWindows;
        platform::KeyMonitor& keys;
        platform::SessionMonitor& session;
        platform::ApplicationLauncher& launcher;
        NavServices navigation;
    };

    // The store and the services outlive the manager.
    TagManager(const Services& services, TagStore& store);
    ~TagManager();
    TagManager(const TagManager&) = delete;
    TagManager& operator=(const TagManager&) = delete;

    // Makes and shows the tag windows and begins to follow events.
    void start();
    // Ends the following of events and all that is pending; the windows stay.
    void stop();
    void reconcile();

    [[nodiscard]] const std::vector<Tag>& tags() const { return store_.tags(); }
    // The tag of the current Space.
    [[nodiscard]] const std::optional<TagID>& activeTagID() const { return activeTagID_; }
    // Called when the tags, the active tag or the set of orphans changed.
    platform::Subscription subscribe(std::function<void()> callback) {
        return changed_.subscribe(std::move(callback));
    }
    // Null for a tag without a window.
    [[nodiscard]] TagWindow* windowFor(const TagID& id) const;
    [[nodiscard]] MissionControlObserver& missionControl() { return missionControl_; }
    [[nodiscard]] PositionController& position() { return position_; }
    [[nodiscard]] SpaceBindingController& binding() { return binding_; }
    [[nodiscard]] NavController& navigation() { return navigation_; }
    // Whether the window is a tag's, or its backup.
    [[nodiscard]] bool isTagWindow(platform::WindowNumber window) const;

    // Called when a tag window is clicked.
    std::function<void()> onTagClicked;
    // Shows a message with an action to take back what it tells of.
    std::function<void(const std::string& message, std::function<void()> undo)> showUndoToast;

    // Makes and shows a tag, on the current Space unless one is given.
    Tag createTag(const std::string& label, const std::string& colorHex,
                  std::optional<std::string> spaceUUID = std::nullopt);
    // Binds the tag to that Space, else to the current one, and points it out.
    void assignTagToSpace(const TagID& id, std::optional<std::string> spaceUUID = std::nullopt);
    void updateTag(const TagID& id, const std::string& label, const std::string& colorHex);
    // Can be undone for a while.
    void deleteTag(const TagID& id);
    // Puts a deleted tag back; nothing when a tag has its id.
    void restoreTag(const Tag& tag);

    // One row for each of the Spaces.
    [[nodiscard]] std::vector<MenuSpaceRow> menuRows(
        const std::function<std::vector<std::string>()>& orderedSpaceUUIDs) const;
    // The tag of the current Space on the pointer's display.
    [[nodiscard]] std::optional<TagID> tagIDForCurrentSpace() const;
    // By the place of their Space in the list, then those without one.
    [[nodiscard]] std::vector<Tag> tagsSortedBySpaceOrder(std::span<const std::string> spaceUUIDs) const;

    // Places the tag's backup window for the current Mission Control style, for a main window at `base`.
    void syncMCBackupFrame(const Tag& tag, const std::optional<platform::Rect>& base = std::nullopt);
    void refreshAllWindowShapes();

    // Shows the tags as Mission Control will, because `source` says that it is about to open.
    void preTrigger(const std::string& source);
    // Enlarges the tags and then opens Mission Control.
    void openMCBig();
    // Shows hidden tags from the first until a moment after the second.
    void peekBegin();
    void peekEnd();
    // Shows hidden tags for a moment.
    void peek();
    // Watches the keyboard anew, for a permission that may have been given.
    void reloadKeystrokeObserver();

  private:
    // Making and placing windows.
    void makeWindow(const Tag& tag);
    void hideFromTheStart();
    static void hideAtOnce(TagWindow& window);
    void bringInPlacedWindows();
    void bringToFront(const Tag& tag);
    void showNewWindow(const Tag& tag);
    void pinToSpace(const TagWindow& window, const std::string& spaceUUID) const;
    void sendHome(const Tag& tag);
    void syncAllMCBackups();
    [[nodiscard]] platform::Rect backupFrame(const Tag& tag, const platform::Rect& base) const;
    [[nodiscard]] std::vector<TagWindow*> mainWindows() const;

    // The tags.
    [[nodiscard]] std::optional<std::string> spaceForNewTag() const;
    void tagsChanged();
    void updateActiveTag();

    // The visibility decision.
    [[nodiscard]] VisibilityInputs visibilityInputs() const;
    void reconcileTag(const Tag& tag, const VisibilityInputs& inputs);
    void hideOrphan(const Tag& tag);
    void showWindow(const Tag& tag, TagWindow& window, bool transientReveal) const;

    // Following events.
    void observe();
    void observeSettings();
    template <typename Value, typename Handler>
    void receive(Value& value, Handler handler);
    void startKeystrokeObserver();
    void onActiveSpaceChanged();
    void onScreenParametersChanged();
    void onSpaceSwitchKeystroke();
    void onMissionControl(bool active);
    void onSwipeTransition(bool inProgress);
    void onSessionEvent(platform::SessionEvent event);
    void pausePolling();
    void resumePolling();
    [[nodiscard]] bool isSessionOnConsole() const;
    [[nodiscard]] bool mayRevealOnSwitch() const;
    [[nodiscard]] bool missionControlRecentlyActive();
    void launchBigMissionControl();
    void applySizeAndReconcile();

    [[nodiscard]] BindingCallbacks bindingCallbacks();
    [[nodiscard]] PositionCallbacks positionCallbacks();
    [[nodiscard]] RevealCallbacks revealCallbacks();
    [[nodiscard]] NavCallbacks navCallbacks();

    Services services_;
    TagStore& store_;
    Settings& settings_;
    platform::RunLoop& runLoop_;
    std::optional<TagID> activeTagID_;
    Observers<> changed_;
    std::map<TagID, std::unique_ptr<TagWindow>> windows_;
    MCActivityGate mcGate_;
    SpaceBindingController binding_;
    RevealController reveal_;
    PositionController position_;
    NavController navigation_;
    MissionControlObserver missionControl_;
    MissionControlKeyObserver missionControlKey_;
    ClickThroughController clickThrough_;
    platform::Timer spaceChangeDebounce_;
    platform::Timer preTriggerRevert_;
    platform::Timer openMCBigStep_;
    std::vector<platform::Subscription> subscriptions_;
    std::shared_ptr<bool>
        following_;  // there while events are followed, for deliveries that are on their way
};

}  // namespace orvellos
