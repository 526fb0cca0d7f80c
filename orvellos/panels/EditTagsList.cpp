#include "orvellos/panels/EditTagsList.h"

#include "orvellos/base/Text.h"
#include "orvellos/tags/Labels.h"

namespace orvellos {

EditTagsList::EditTagsList(TagManager& manager, const SpaceIdentifier& spaces,
                           std::function<void()> showSettings)
    : manager_(manager),
      spaces_(spaces),
      showSettings_(std::move(showSettings)),
      tagsChanged_(manager.subscribe([this] { follow(); })) {}

std::vector<EditTagsList::Row> EditTagsList::rows() const {
    const auto active = manager_.tagIDForCurrentSpace();
    const auto& orphans = manager_.orphanedTagIDs();
    std::vector<Row> rows;
    for (auto& tag : manager_.tagsSortedBySpaceOrder(spaces_.orderedSpaceUUIDs()))
        rows.push_back({tag, tag.id == active, orphans.contains(tag.id)});
    return rows;
}

std::string EditTagsList::countText() const {
    return std::to_string(manager_.tags().size());
}

std::string EditTagsList::editLabel(const Tag& tag) {
    return "Edit " + shortLabel(tag.label);
}

std::string EditTagsList::jumpLabel(const Tag& tag) {
    return "Jump to " + shortLabel(tag.label);
}

std::string EditTagsList::positionLabel(const Tag& tag) {
    return "Position actions for " + shortLabel(tag.label);
}

std::string EditTagsList::deleteLabel(const Tag& tag) {
    return "Delete " + shortLabel(tag.label);
}

void EditTagsList::edit(const TagID& id) {
    const auto* tag = tagWithID(manager_.tags(), id);
    if (!tag) return;
    buffer_ = {id, tag->label, tag->colorHex};
    changed_.notify();
}

bool EditTagsList::canSave() const {
    return buffer_ && !trimmed(buffer_->label).empty();
}

void EditTagsList::save() {
    if (!canSave()) return;
    const auto buffer = *std::exchange(buffer_, std::nullopt);
    manager_.updateTag(buffer.id, std::string(trimmed(buffer.label)), buffer.colorHex);
    changed_.notify();
}

void EditTagsList::cancelEdit() {
    buffer_.reset();
    changed_.notify();
}

// A tag may go while its row is being edited.
void EditTagsList::follow() {
    if (buffer_ && !tagWithID(manager_.tags(), buffer_->id)) buffer_.reset();
    changed_.notify();
}

}  // namespace orvellos
