#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orvellos/spaces/SpaceIdentifier.h"
#include "orvellos/windows/TagManager.h"

namespace orvellos {

// The texts and the operations of the list of the user's tags. At most one row at a time is being edited.
class EditTagsList {
  public:
    static constexpr std::string_view kHeading = "Your tags";
    static constexpr std::string_view kSettingsHelp = "Settings";
    static constexpr std::string_view kNoTags = "No tags yet";
    static constexpr std::string_view kHowToTag = "Use the menu bar icon to tag a space.";
    static constexpr std::string_view kActiveHere = "active here";
    static constexpr std::string_view kSpaceMissing = "Space missing";
    static constexpr std::string_view kSpaceMissingLabel = "Space no longer exists";
    static constexpr std::string_view kSpaceMissingHelp =
        "The Space this tag was pinned to no longer exists. Use ⋯ → Reassign to re-bind it, or reconnect the "
        "display.";
    static constexpr std::string_view kEditHelp = "Edit label and color";
    static constexpr std::string_view kJumpHelp = "Jump to this Space";
    static constexpr std::string_view kPositionHelp = "Position actions";
    static constexpr std::string_view kReassign = "Reassign to this Space";
    static constexpr std::string_view kAlignAll = "Align all tags to this one's position";
    static constexpr std::string_view kRelink = "Re-link to shared position";
    static constexpr std::string_view kDeleteHelp = "Delete (undo available for 5 seconds)";
    static constexpr std::string_view kSave = "Save";
    static constexpr std::string_view kCancel = "Cancel";

    struct Row {
        Tag tag;
        bool isActiveHere = false;    // its Space is the current one
        bool isSpaceMissing = false;  // its Space does not exist
        bool operator==(const Row&) const = default;
    };
    // The text and the colour that the user has entered into a row.
    struct EditBuffer {
        TagID id;
        std::string label;
        std::string colorHex;
        bool operator==(const EditBuffer&) const = default;
    };

    EditTagsList(TagManager& manager, const SpaceIdentifier& spaces, std::function<void()> showSettings);
    EditTagsList(const EditTagsList&) = delete;
    EditTagsList& operator=(const EditTagsList&) = delete;

    // In the order of their Spaces.
    [[nodiscard]] std::vector<Row> rows() const;
    [[nodiscard]] std::string countText() const;
    // Called when the rows, or which of them is edited, may have changed.
    platform::Subscription subscribe(std::function<void()> callback) {
        return changed_.subscribe(std::move(callback));
    }

    // Absent while no row is edited. The view writes into it as the user types.
    [[nodiscard]] std::optional<EditBuffer>& editBuffer() { return buffer_; }
    void edit(const TagID& id);
    // Whether the label is more than white space.
    [[nodiscard]] bool canSave() const;
    // Gives the tag the label, without white space around it, and the colour; nothing while there is no
    // label.
    void save();
    void cancelEdit();

    void jump(const TagID& id) { manager_.navigateToTagID(id); }
    void reassign(const TagID& id) { manager_.assignTagToSpace(id); }
    void alignAll(const TagID& id) { manager_.alignAllToTag(id); }
    void relink(const TagID& id) { manager_.relinkToSharedPosition(id); }
    void remove(const TagID& id) { manager_.deleteTag(id); }
    void showSettings() const { showSettings_(); }

    // Accessible names of a row's buttons, which tell whose row it is.
    [[nodiscard]] static std::string editLabel(const Tag& tag);
    [[nodiscard]] static std::string jumpLabel(const Tag& tag);
    [[nodiscard]] static std::string positionLabel(const Tag& tag);
    [[nodiscard]] static std::string deleteLabel(const Tag& tag);

  private:
    void follow();

    TagManager& manager_;
    const SpaceIdentifier& spaces_;
    std::function<void()> showSettings_;
    std::optional<EditBuffer> buffer_;
    Observers<> changed_;
    platform::Subscription tagsChanged_;
};

}  // namespace orvellos
