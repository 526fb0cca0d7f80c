#include "orvellos/tags/TagStore.h"

#include <limits>

#include "orvellos/tags/TagJson.h"
#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

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

class TagStoreTests : public ApplicationTest {
  protected:
    TagStore open() { return {files_, desktop_.runLoop, tagFolder(desktop_.folders)}; }
    void put(const std::filesystem::path& path, const std::vector<Tag>& tags) {
        files_.put(path, encodeTags(tags).value());
    }
    [[nodiscard]] std::vector<Tag> stored(const std::filesystem::path& path) const {
        const auto text = files_.read(path);
        return text ? decodeTags(text.value()).value_or(std::vector<Tag>()) : std::vector<Tag>();
    }

    platform::simulated::SimulatedFileSystem& files_ = desktop_.files;
};

TEST_F(TagStoreTests, FirstStartMakesTheFolderAndNothingElse) {
    EXPECT_EQ(open().fileURL(), kFile);
    EXPECT_TRUE(files_.folders.contains(kFolder));
    EXPECT_TRUE(files_.files.empty());
    EXPECT_EQ(logged(), Texts());

    desktop_.folders.applicationSupportFolder.reset();
    EXPECT_EQ(tagFilePath(desktop_.folders), "/home/user/Library/Application Support/orvello/tags.json");
    desktop_.folders.homeFolder.reset();
    EXPECT_EQ(tagFilePath(desktop_.folders), "");
    auto store = open();
    store.add(makeTags(1)[0]);
    EXPECT_EQ(logged(), Texts{"TagStore: SAVE FAILED for 1 tag(s): open: No such file or directory"});
    EXPECT_TRUE(files_.files.empty());
}

TEST_F(TagStoreTests, LoadsOrRecoversWithoutLosingAnything) {
    const auto three = makeTags(3);
    const auto damage = [this](const std::filesystem::path& path) {
        files_.put(path, R"([{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","label":"A"}])");
    };
    struct Row {
        const char* name;
        std::function<void()> prepare;
        std::size_t tags;
        Texts log;
    };
    const Row rows[] = {
        {"empty keeps the backup", [&] { put(kFile, {}), put(kBackup, three); }, 0, {}},
        {"good", [&] { put(kFile, three); }, 3, {}},
        {"damaged, good backup", [&] { damage(kFile), put(kBackup, three); }, 3, {kQuarantined, kRecovered}},
        {"damaged, no backup", [&] { damage(kFile); }, 0, {kQuarantined, kStartingEmpty}},
        {"both damaged", [&] { damage(kFile), damage(kBackup); }, 0, {kQuarantined, kStartingEmpty}},
        {"unreadable",
         [&] { put(kFile, makeTags(1)), files_.unreadable = {kFile}, put(kBackup, three); },
         3,
         {kQuarantined, kRecovered}},
        {"a folder",
         [&] { put(kBackup, three), files_.folders.insert(kFile); },
         3,
         {kQuarantined, kRecovered}},
        {"quarantine of the same second",
         [&] { damage(kFile), damage(kQuarantine), put(kBackup, three); },
         3,
         {"TagStore: FAILED to quarantine unreadable store: rename: File exists", kRecovered}},
        {"folder that cannot be written",
         [&] { damage(kFile), put(kBackup, three), files_.unwritable = {kFolder}; },
         3,
         {"TagStore: FAILED to quarantine unreadable store: rename: Permission denied", kRecovered,
          "TagStore: SAVE FAILED for 3 tag(s): open: Permission denied"}},
        {"full disk",
         [&] { put(kFile, three), files_.nextWrites = {kFull}; },
         3,
         {"TagStore: backup write failed: write: No space left on device"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        files_ = {};
        connectLog(false);
        row.prepare();
        const auto before = files_;
        const auto store = open();
        EXPECT_EQ(store.tags().size(), row.tags);
        EXPECT_EQ(logged(), row.log);
        const bool quarantined = !row.log.empty() && row.log[0] == kQuarantined;
        EXPECT_EQ(files_.exists(kQuarantine), quarantined || before.exists(kQuarantine));
        if (quarantined && before.files.contains(kFile)) {
            EXPECT_EQ(files_.files.at(kQuarantine), before.files.at(kFile));
        }
        if (store.tags().empty()) {
            EXPECT_TRUE(files_.writes.empty());
        } else if (!files_.writes.empty()) {
            EXPECT_EQ(stored(kBackup), store.tags());
            EXPECT_EQ(stored(kFile), store.tags());
        }
    }
}

TEST_F(TagStoreTests, WritesTheBackupOnlyWhereItDiffers) {
    put(kFile, makeTags(2));
    open();
    EXPECT_EQ(files_.writes.size(), 1U);
    open();
    EXPECT_EQ(files_.writes.size(), 1U);
    put(kFile, makeTags(3));
    open();
    EXPECT_EQ(files_.writes.size(), 2U);
}

TEST_F(TagStoreTests, WritesEachChangeAtOnceAndOnlyToTheFirstMatch) {
    auto tags = makeTags(3);
    tags[2].id = tags[1].id;
    put(kFile, tags);
    auto store = open();
    files_.writes.clear();
    const auto id = tags[1].id;
    const platform::Rect frame{1, 2, 3, 4};
    struct Row {
        std::function<void(const TagID&)> change;
        Tag after;
    };
    const Row rows[] = {
        {[&](auto& tag) { store.updateFrame(tag, frame); }, {id, "label", "#EF4444", frame, {}}},
        {[&](auto& tag) { store.updateSpaceUUID(tag, "S"); }, {id, "label", "#EF4444", frame, "S"}},
        {[&](auto& tag) { store.clearFrame(tag); }, {id, "label", "#EF4444", {}, "S"}},
        {[&](auto& tag) { store.updateSpaceUUID(tag, std::nullopt); }, {id, "label", "#EF4444", {}, {}}},
        {[&](auto& tag) {
             store.update({tag, "other", "#FFFFFF", {}, "T"});
         },
         {id, "other", "#FFFFFF", {}, "T"}},
    };
    for (const auto& row : rows) {
        row.change(TagID::random());
        row.change(id);
        tags[1] = row.after;
        EXPECT_EQ(store.tags(), tags);
        EXPECT_EQ(files_.writes.size(), &row - rows + 1U);
        EXPECT_EQ(files_.writes.back(), std::pair(kFile, encodeTags(tags).value()));
    }
    store.remove(TagID::random());
    EXPECT_EQ(files_.writes.size(), std::size(rows));
    store.remove(store.tags()[0].id);
    EXPECT_EQ(stored(kFile), std::vector(tags.begin() + 1, tags.end()));
}

TEST_F(TagStoreTests, KeepsAChangeInMemoryThatCannotBeSaved) {
    const auto tags = makeTags(2);
    put(kFile, tags);
    auto store = open();
    files_.nextWrites = {kFull};
    store.updateSpaceUUID(tags[0].id, "S");
    EXPECT_EQ(store.tags()[0].spaceUUID, "S");
    EXPECT_EQ(stored(kFile), tags);
    store.updateFrame(tags[1].id, {0, 0, std::numeric_limits<double>::infinity(), 1});
    EXPECT_EQ(stored(kFile), tags);
    ASSERT_EQ(logged().size(), 2U);
    EXPECT_EQ(logged()[0], "TagStore: SAVE FAILED for 2 tag(s): write: No space left on device");
    EXPECT_TRUE(logged()[1].starts_with("TagStore: SAVE FAILED for 2 tag(s): encode: The frame of tag "));
}

}  // namespace
}  // namespace orvellos
