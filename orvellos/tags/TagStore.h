#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "orvellos/tags/Tag.h"
#include "platform/Files.h"

namespace orvellos {

// The folder that holds the user's tag file: "orvello" in the user's folder for application data. Empty when
// the user has neither that nor a home.
[[nodiscard]] std::filesystem::path tagFolder(const platform::Folders& folders);
// The user's tag file; empty without that folder.
[[nodiscard]] std::filesystem::path tagFilePath(const platform::Folders& folders);

// Owns the tags and the one file that holds them between runs. Every change is written before the operation
// returns. A file that cannot be read is moved aside, and the tags come back from the backup that each start
// makes of what it loaded. Failures are logged; the tags in memory keep every change.
class TagStore {
  public:
    // Creates the folder, loads the tags and refreshes the backup. With an empty folder nothing is read, and
    // every save fails.
    TagStore(platform::FileSystem& files, const platform::RunLoop& clock,
             const std::filesystem::path& folder);

    [[nodiscard]] const std::filesystem::path& fileURL() const { return fileURL_; }
    // In file order.
    [[nodiscard]] const std::vector<Tag>& tags() const { return tags_; }

    // At the end.
    void add(const Tag& tag);
    // Nothing is written when no tag has that id.
    void remove(TagID id);
    // Each changes the first tag with that id; an unknown id changes and writes nothing.
    void updateSpaceUUID(const TagID& id, std::optional<std::string> spaceUUID);
    void updateFrame(const TagID& id, const platform::Rect& frame);
    void clearFrame(const TagID& id);
    void update(const Tag& tag);

  private:
    void save();
    // The text that the tags were read from; empty when there is none.
    [[nodiscard]] std::string load();
    void writeBackup(const std::string& loaded);
    void quarantineUnreadableStore();
    // Loads the tags of a file and gives its text; fails, and changes nothing, when it is not a tag file.
    [[nodiscard]] platform::Result<std::string> readTags(const std::filesystem::path& file);
    [[nodiscard]] std::filesystem::path backupURL() const;
    template <typename Change>
    void change(const TagID& id, Change apply);

    platform::FileSystem& files_;
    const platform::RunLoop& clock_;
    std::filesystem::path fileURL_;
    std::vector<Tag> tags_;
};

}  // namespace orvellos
