#include "orvellos/TagStore.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <limits>

#include "orvellos/DebugLog.h"
#include "orvellos/TagJson.h"
#include "platform/simulated/SimulatedFileSystem.h"
#include "platform/simulated/SimulatedFolders.h"
#include "platform/simulated/SimulatedRunLoop.h"

namespace orvellos {
namespace {

using Lines = std::vector<std::string>;
using platform::Rect;

const platform::Error kFull{"write: No space left on device"};

const std::filesystem::path kFolder = "/home/user/.local/share/orvello";
const auto kFile = kFolder / "tags.json";
const auto kBackup = kFolder / "tags.json.bak";
const auto kQuarantine = kFolder / "tags.json.corrupt-20260314-143000";

constexpr const char* kQuarantined =
    "TagStore: quarantined unreadable store to tags.json.corrupt-20260314-143000";
constexpr const char* kRecovered = "TagStore: store was unreadable — recovered 3 tag(s) from backup";
constexpr const char* kStartingEmpty =
    "TagStore: store was unreadable and no usable backup exists — starting empty (original preserved in "
    "quarantine)";

std::vector<Tag> makeTags(int count) {
    std::vector<Tag> tags(static_cast<std::size_t>(count));
    for (auto& tag : tags) tag = {TagID::random(), "label", "#EF4444", std::nullopt, std::nullopt};
    return tags;
}

class TagStoreTests : public testing::Test {
  protected:
    TagStoreTests() {
        setenv("TZ", "TEST-5:30", 1);  // five and a half hours ahead of UTC
        tzset();
        connectDebugLog({});
    }

    TagStore open() { return {files_, clock_, tagFolder(folders_)}; }
    void put(const std::filesystem::path& path, const std::vector<Tag>& tags) {
        files_.put(path, encodeTags(tags).value());
    }
    [[nodiscard]] std::vector<Tag> stored(const std::filesystem::path& path) const {
        const auto text = files_.read(path);
        return text ? decodeTags(text.value()).value_or(std::vector<Tag>()) : std::vector<Tag>();
    }
    static Lines logged() {
        Lines lines;
        for (const auto& line : timelineSnapshot()) lines.push_back(line.substr(line.find(" nav ") + 5));
        return lines;
    }

    platform::simulated::SimulatedFileSystem files_;
    platform::simulated::SimulatedFolders folders_;
    platform::simulated::SimulatedRunLoop clock_;
};

TEST_F(TagStoreTests, FirstStartMakesTheFolderAndNothingElse) {
    files_.folders.insert({"/home", "/home/user"});
    auto store = open();
    EXPECT_EQ(store.fileURL(), kFile);
    EXPECT_TRUE(files_.folders.contains(kFolder));
    EXPECT_TRUE(files_.files.empty());
    EXPECT_EQ(logged(), Lines());
    folders_.applicationSupportFolder.reset();
    EXPECT_EQ(tagFilePath(folders_), "/home/user/Library/Application Support/orvello/tags.json");
    folders_.homeFolder.reset();
    EXPECT_EQ(tagFilePath(folders_), "");
}

TEST_F(TagStoreTests, LoadsOrRecoversWithoutLosingAnything) {
    const auto three = makeTags(3);
    const std::string damaged = R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","label":"A"}])";
    struct Row {
        const char* name;
        std::function<void()> prepare;
        std::size_t tags;
        Lines log;
    };
    const Row rows[] = {
        {"empty array keeps the backup", [&] { put(kFile, {}), put(kBackup, three); }, 0, {}},
        {"good file", [&] { put(kFile, three); }, 3, {}},
        {"damaged file, good backup",
         [&] { files_.put(kFile, damaged), put(kBackup, three); },
         3,
         {kQuarantined, kRecovered}},
        {"damaged file, no backup", [&] { files_.put(kFile, damaged); }, 0, {kQuarantined, kStartingEmpty}},
        {"damaged file and backup",
         [&] { files_.put(kFile, damaged), files_.put(kBackup, damaged); },
         0,
         {kQuarantined, kStartingEmpty}},
        {"unreadable file",
         [&] { put(kFile, makeTags(1)), files_.unreadable.insert(kFile), put(kBackup, three); },
         3,
         {kQuarantined, kRecovered}},
        {"folder in the file's place",
         [&] { put(kBackup, three), files_.folders.insert(kFile); },
         3,
         {kQuarantined, kRecovered}},
        {"quarantine of the same second",
         [&] { files_.put(kFile, damaged), files_.put(kQuarantine, "older"), put(kBackup, three); },
         3,
         {"TagStore: FAILED to quarantine unreadable store: rename: File exists", kRecovered}},
        {"folder that cannot be written",
         [&] { files_.put(kFile, damaged), put(kBackup, three), files_.unwritable.insert(kFolder); },
         3,
         {"TagStore: FAILED to quarantine unreadable store: rename: Permission denied", kRecovered,
          "TagStore: SAVE FAILED for 3 tag(s): open: Permission denied",
          "TagStore: backup write failed: open: Permission denied"}},
        {"full disk",
         [&] { put(kFile, three), files_.nextWrites = {kFull}; },
         3,
         {"TagStore: backup write failed: write: No space left on device"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        files_ = {};
        connectDebugLog({});
        row.prepare();
        const auto before = files_;
        const auto store = open();
        EXPECT_EQ(store.tags.size(), row.tags);
        EXPECT_EQ(logged(), row.log);
        const bool quarantined = !row.log.empty() && row.log[0] == kQuarantined;
        EXPECT_EQ(files_.exists(kQuarantine), quarantined || before.exists(kQuarantine));
        if (quarantined && before.files.contains(kFile)) {
            EXPECT_EQ(files_.files.at(kQuarantine), before.files.at(kFile));
        }
        if (store.tags.empty()) {
            EXPECT_TRUE(files_.writes.empty());
        } else if (!files_.writes.empty()) {
            EXPECT_EQ(stored(kBackup), store.tags);
            EXPECT_EQ(stored(kFile), store.tags);
        }
    }
}

TEST_F(TagStoreTests, WritesEachChangeAtOnceAndOnlyToTheFirstMatch) {
    auto tags = makeTags(3);
    tags[2].id = tags[1].id;
    put(kFile, tags);
    auto store = open();
    files_.writes.clear();
    const auto id = tags[1].id;

    store.updateFrame(id, {1, 2, 3, 4});
    tags[1].frame = Rect{1, 2, 3, 4};
    EXPECT_EQ(stored(kFile), tags);
    store.updateSpaceUUID(id, "S");
    tags[1].spaceUUID = "S";
    EXPECT_EQ(stored(kFile), tags);
    store.clearFrame(id);
    store.updateSpaceUUID(id, std::nullopt);
    tags[1] = {id, "other", "#FFFFFF", std::nullopt, "T"};
    store.update(tags[1]);
    EXPECT_EQ(stored(kFile), tags);
    EXPECT_EQ(files_.writes.size(), 5U);
    for (const auto& [path, bytes] : files_.writes) EXPECT_EQ(path, kFile) << "the backup is left alone";

    const auto unknown = makeTags(1)[0];
    store.update(unknown);
    store.updateFrame(unknown.id, {});
    store.clearFrame(unknown.id);
    store.updateSpaceUUID(unknown.id, "S");
    EXPECT_EQ(files_.writes.size(), 5U);
    EXPECT_EQ(store.tags, tags);
}

TEST_F(TagStoreTests, KeepsAChangeInMemoryThatCannotBeSaved) {
    const auto tags = makeTags(2);
    put(kFile, tags);
    auto store = open();
    files_.nextWrites = {kFull};
    store.updateSpaceUUID(tags[0].id, "S");
    EXPECT_EQ(store.tags[0].spaceUUID, "S");
    EXPECT_EQ(stored(kFile), tags);
    store.updateFrame(tags[1].id, {0, 0, std::numeric_limits<double>::infinity(), 1});
    EXPECT_EQ(stored(kFile), tags);
    ASSERT_EQ(logged().size(), 2U);
    EXPECT_EQ(logged()[0], "TagStore: SAVE FAILED for 2 tag(s): write: No space left on device");
    EXPECT_TRUE(logged()[1].starts_with("TagStore: SAVE FAILED for 2 tag(s): encode: The frame of tag "));
}

TEST_F(TagStoreTests, WithoutAnyFolderKeepsTagsInMemory) {
    folders_.applicationSupportFolder.reset();
    folders_.homeFolder.reset();
    auto store = open();
    store.tags = makeTags(1);
    store.save();
    EXPECT_EQ(logged(), Lines{"TagStore: SAVE FAILED for 1 tag(s): open: No such file or directory"});
    EXPECT_TRUE(files_.files.empty());
}

}  // namespace
}  // namespace orvellos
