#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/tags/TagStore.h"
#include "orvellos/windows/PositionController.h"
#include "orvellos/windows/RevealController.h"
#include "orvellos/windows/SpaceBindingController.h"
#include "orvellos/windows/TagWindow.h"

namespace orvellos {

// The stored tags and the window of each, with its Mission Control backup: makes them, brings them to the
// front, takes them to their Space and their place. What of them is seen is decided elsewhere.
class TagWindows final : public PlacedTags, public BoundTags, public RevealedTags, private TagWindowOwner {
  public:
    // `changed` is notified when stored tags change, `onTagClicked` called when a window is clicked. Until
    // the first window is made, nothing is asked of `position`.
    TagWindows(const TagWindowServices& services, const SpaceIdentifier& spaces, TagStore& store,
               PositionController& position, const Observers<>& changed, std::function<void()> onTagClicked);

    [[nodiscard]] const std::vector<Tag>& tagsProvider() const override { return store_.tags(); }
    [[nodiscard]] TagWindow* windowFor(const TagID& id) const override;
    [[nodiscard]] std::vector<TagWindow*> mainWindows() const;
    // Whether the window is a tag's, or its backup.
    [[nodiscard]] bool isTagWindow(platform::WindowNumber number) const;

    TagWindow& make(const Tag& tag);
    // Takes the tag's window, if it has one, from the screen.
    void remove(const TagID& id);
    // A window whose Space cannot be told yet would come up on whatever Space is current, so it stays back.
    void bringToFront(const Tag& tag) const;
    // The same for every window that is not on the screen.
    void bringInPlacedWindows() const;
    void pinToSpace(const TagWindow& window, const std::string& spaceUUID) const;
    void removeFromSpace(const TagWindow& window, const std::string& spaceUUID) const;
    // Moves every window to its place at once.
    void sendHome();
    // Places the tag's backup for the current Mission Control style, for a main window at `base`, or where it
    // is.
    void syncMCBackupFrame(const Tag& tag, const std::optional<platform::Rect>& base = std::nullopt);
    void refreshAllWindowShapes();

    [[nodiscard]] platform::Rect homeTargetFrame(const Tag& tag, TagSize size) const override;
    void updateSpaceUUIDInStore(const TagID& id, const std::string& spaceUUID) override;
    void updateFrameInStore(const TagID& id, const platform::Rect& frame) override;
    void clearFrameInStore(const TagID& id) override;
    void refreshTagsFromStore() override { changed_.notify(); }
    void syncMCBackup(const Tag& tag) override { syncMCBackupFrame(tag); }
    void syncAllMCBackups() override;

  private:
    void onFrameChange(const TagID& id, const platform::Rect& frame, bool shiftHeld) override;
    void onClick() override { onTagClicked_(); }
    [[nodiscard]] std::optional<platform::Screen> preferredScreenProvider(const TagID& id) const override;
    [[nodiscard]] platform::Rect backupFrame(const Tag& tag, const platform::Rect& base) const;

    TagWindowServices services_;
    const SpaceIdentifier& spaces_;
    TagStore& store_;
    PositionController& position_;
    const Observers<>& changed_;
    std::function<void()> onTagClicked_;
    std::map<TagID, std::unique_ptr<TagWindow>> windows_;
};

}  // namespace orvellos
