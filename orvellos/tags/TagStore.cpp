#include "orvellos/tags/TagStore.h"

#include <fmt/format.h>

#include <utility>

#include "orvellos/base/DebugLog.h"
#include "orvellos/tags/TagJson.h"
#include "platform/System.h"

namespace orvellos {

namespace {

// Never relative to the working folder.
std::filesystem::path fileIn(const std::filesystem::path& folder) {
    return folder.empty() ? folder : folder / "tags.json";
}

}  // namespace

std::filesystem::path tagFolder(const platform::Folders& folders) {
    if (const auto support = folders.applicationSupport()) return *support / "orvello";
    if (const auto home = folders.home()) return *home / "Library/Application Support" / "orvello";
    return {};
}

std::filesystem::path tagFilePath(const platform::Folders& folders) {
    return fileIn(tagFolder(folders));
}

TagStore::TagStore(platform::FileSystem& files, const platform::RunLoop& clock,
                   const std::filesystem::path& folder)
    : files_(files), clock_(clock), fileURL_(fileIn(folder)) {
    // Where the folder cannot be had, every later read and write fails and says so.
    [[maybe_unused]] const auto ignored = files_.createFolders(folder);
    writeBackup(load());
}

std::filesystem::path TagStore::backupURL() const {
    return fileURL_.string() + ".bak";
}

platform::Result<std::string> TagStore::readTags(const std::filesystem::path& file) {
    auto text = files_.read(file);
    if (!text) return text;
    auto read = decodeTags(text.value());
    if (!read) return platform::Error{"decode: Not a tag file"};
    tags_ = std::move(*read);
    return text;
}

std::string TagStore::load() {
    if (!files_.exists(fileURL_)) return {};
    if (auto text = readTags(fileURL_)) return std::move(text.value());
    quarantineUnreadableStore();
    auto text = readTags(backupURL());
    if (!text) {
        log(LogCategory::Nav,
            "TagStore: store was unreadable and no usable backup exists — starting empty (original "
            "preserved in quarantine)");
        return {};
    }
    log(LogCategory::Nav,
        fmt::format("TagStore: store was unreadable — recovered {} tag(s) from backup", tags_.size()));
    save();
    return std::move(text.value());
}

void TagStore::quarantineUnreadableStore() {
    const auto aside =
        fileURL_.string() + ".corrupt-" + platform::localTimeText(clock_.wallNow(), "%Y%m%d-%H%M%S");
    if (const auto error = files_.move(fileURL_, aside)) {
        log(LogCategory::Nav, "TagStore: FAILED to quarantine unreadable store: " + error->description);
    } else {
        log(LogCategory::Nav,
            "TagStore: quarantined unreadable store to " + std::filesystem::path(aside).filename().string());
    }
}

// One that already says the same is left alone: a durable write is a good part of a start, and so is putting
// many tags into words.
void TagStore::writeBackup(const std::string& loaded) {
    if (tags_.empty()) return;
    const auto former = files_.read(backupURL());
    if (former && former.value() == loaded) return;
    const auto text = encodeTags(tags_);
    if (text && former && former.value() == text.value()) return;
    if (const auto error = text ? files_.writeAtomically(backupURL(), text.value()) : text.error())
        log(LogCategory::Nav, "TagStore: backup write failed: " + error->description);
}

void TagStore::save() {
    const auto text = encodeTags(tags_);
    if (const auto error = text ? files_.writeAtomically(fileURL_, text.value()) : text.error())
        log(LogCategory::Nav,
            fmt::format("TagStore: SAVE FAILED for {} tag(s): {}", tags_.size(), error->description));
}

template <typename Change>
void TagStore::change(const TagID& id, Change apply) {
    const auto* found = tagWithID(tags_, id);
    if (!found) return;
    apply(tags_[static_cast<std::size_t>(found - tags_.data())]);
    save();
}

void TagStore::add(const Tag& tag) {
    tags_.push_back(tag);
    save();
}

void TagStore::remove(TagID id) {
    if (std::erase_if(tags_, [&](const Tag& tag) { return tag.id == id; }) > 0) save();
}

void TagStore::updateSpaceUUID(const TagID& id, std::optional<std::string> spaceUUID) {
    change(id, [&](Tag& tag) { tag.spaceUUID = std::move(spaceUUID); });
}

void TagStore::updateFrame(const TagID& id, const platform::Rect& frame) {
    change(id, [&](Tag& tag) { tag.frame = frame; });
}

void TagStore::clearFrame(const TagID& id) {
    change(id, [](Tag& tag) { tag.frame.reset(); });
}

void TagStore::update(const Tag& tag) {
    change(tag.id, [&](Tag& old) { old = tag; });
}

}  // namespace orvellos
