#pragma once

#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "orvellos/spaces/NavController.h"
#include "orvellos/tags/TagStore.h"
#include "orvellos/windows/MenuSpaceRow.h"
#include "orvellos/windows/TagEvents.h"
#include "orvellos/windows/TagWindows.h"
#include "orvellos/windows/VisibilityController.h"

namespace orvellos {

// What the user can do with tags, and what menus and panels want to know of them. Owns the windows of the
// tags and the controllers that act on them. Main thread only.
class TagManager final : private NavigatedTags {
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

    TagManager(const Services& services, TagStore& store);
    ~TagManager() override;
    TagManager(const TagManager&) = delete;
    TagManager& operator=(const TagManager&) = delete;

    // Makes and shows the tag windows and begins to follow events.
    void start();
    // Ends the following of events and all that is pending; the windows stay.
    void stop();
    void reconcile() { visibility_.reconcile(); }

    [[nodiscard]] const std::vector<Tag>& tags() const { return store_.tags(); }
    // The tag of the current Space.
    [[nodiscard]] const std::optional<TagID>& activeTagID() const { return visibility_.activeTagID(); }
    // The tags whose Space does not exist.
    [[nodiscard]] const std::set<TagID>& orphanedTagIDs() const { return binding_.orphanedTagIDs().get(); }
    // Called when the tags, the active tag or the set of orphans changed.
    platform::Subscription subscribe(std::function<void()> callback) {
        return changed_.subscribe(std::move(callback));
    }
    // Null for a tag without a window.
    [[nodiscard]] TagWindow* windowFor(const TagID& id) const { return windows_.windowFor(id); }
    // Whether the window is a tag's, or its backup.
    [[nodiscard]] bool isTagWindow(platform::WindowNumber window) const {
        return windows_.isTagWindow(window);
    }

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
    // See PositionController.
    void relinkToSharedPosition(const TagID& id) { position_.relinkToSharedPosition(id); }
    void alignAllToTag(const TagID& id) { position_.alignAllToTag(id); }

    // See NavController.
    bool navigateToTagID(const TagID& id) { return navigation_.navigateToTagID(id); }
    bool navigateToSpace(const std::string& uuid) { return navigation_.navigateToSpace(uuid); }
    [[nodiscard]] bool areShortcutsEnabled() const { return navigation_.areShortcutsEnabled(); }
    [[nodiscard]] std::optional<NavRemedy> neededRemedy() const { return navigation_.neededRemedy(); }
    void openSettings(NavRemedy remedy) { navigation_.openSettings(remedy); }

    // One row for each of the Spaces.
    [[nodiscard]] std::vector<MenuSpaceRow> menuRows(
        const std::function<std::vector<std::string>()>& orderedSpaceUUIDs) const;
    // The tag of the current Space on the pointer's display.
    [[nodiscard]] std::optional<TagID> tagIDForCurrentSpace() const;
    // By the place of their Space in the list; tags without one come last.
    [[nodiscard]] std::vector<Tag> tagsSortedBySpaceOrder(std::span<const std::string> spaceUUIDs) const;

    // Enlarges the tags and then opens Mission Control.
    void openMCBig() { preview_.openMCBig(); }
    // Shows hidden tags from the first until a moment after the second.
    void peekBegin();
    void peekEnd();
    // Watches the keyboard anew, for a permission that may have been given.
    void reloadKeystrokeObserver() { events_.reloadKeystrokeObserver(); }

  private:
    [[nodiscard]] const std::vector<Tag>& tagsProvider() const override { return tags(); }
    void relocate() override { binding_.relocate(); }
    void beginTransientReveal() override { reveal_.beginTransientReveal(false); }
    [[nodiscard]] std::optional<std::string> spaceForNewTag() const;
    void showNewWindow(const Tag& tag);

    TagStore& store_;
    const SpaceIdentifier& spaces_;
    const Settings& settings_;
    Observers<> changed_;
    // Some of these are given others that are made later, and ask nothing of them until `start`.
    TagWindows windows_;
    ClickThroughController clickThrough_;
    VisibilityController visibility_;
    MissionControlObserver missionControl_;
    SpaceBindingController binding_;
    RevealController reveal_;
    PositionController position_;
    NavController navigation_;
    MissionControlPreview preview_;
    TagEvents events_;
    platform::Subscription orphansChanged_;
};

}  // namespace orvellos
