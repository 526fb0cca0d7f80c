#pragma once

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "orvellos/ClickThroughController.h"
#include "orvellos/PositionController.h"
#include "orvellos/SpaceBindingController.h"
#include "orvellos/TagStore.h"
#include "orvellos/TagVisibility.h"
#include "orvellos/TagWindow.h"
#include "platform/Spaces.h"

namespace orvellos {

// Owns the tags and their windows and answers every event with the same step, `reconcile`, which decides what
// of each tag is seen. Main thread only.
class TagManager {
  public:
    struct Services {
        TagWindowServices windows;
        const SpaceIdentifier& spaces;
        platform::SpaceNotifications& spaceNotifications;
        platform::Screens& screens;
        const platform::Pointer& pointer;
    };

    // Loads the tags from the store. The store and the services outlive the manager.
    TagManager(const Services& services, TagStore& store);
    ~TagManager();
    TagManager(const TagManager&) = delete;
    TagManager& operator=(const TagManager&) = delete;

    // Makes and shows the tag windows and begins to follow events.
    void start();
    // Ends the following of events; the windows stay.
    void stop();
    void reconcile();

    [[nodiscard]] const std::vector<Tag>& tags() const { return store_.tags; }
    [[nodiscard]] TagWindow* windowFor(const TagID& id) const;
    // Called when a tag window is clicked.
    std::function<void()> onTagClicked;

    // Places the tag's backup window for the current Mission Control style, beginning at the main window's
    // frame.
    void syncMCBackupFrame(const Tag& tag);
    void refreshAllWindowShapes();

  private:
    void makeWindow(const Tag& tag);
    void hideFromTheStart();
    void bringInPlacedWindows();
    void sendHome(const Tag& tag);
    void applyTagSize();
    void syncAllMCBackups();
    void onActiveSpaceChanged();
    void onScreenParametersChanged();
    void observe();
    [[nodiscard]] VisibilityInputs visibilityInputs() const;
    void reconcileTag(const Tag& tag, TagVisibility decision);
    [[nodiscard]] std::vector<TagWindow*> mainWindows() const;
    [[nodiscard]] platform::Rect backupFrame(const Tag& tag, const platform::Rect& base) const;

    Services services_;
    TagStore& store_;
    Settings& settings_;
    std::map<TagID, std::unique_ptr<TagWindow>> windows_;
    SpaceBindingController binding_;
    PositionController position_;
    ClickThroughController clickThrough_;
    platform::Timer spaceChangeDebounce_;
    std::vector<platform::Subscription> subscriptions_;
};

}  // namespace orvellos
