#include "platform/freedesktop/JsonDefaultsStore.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/freedesktop/PosixFileSystem.h"
#include "platform/simulated/SimulatedFileSystem.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TimeZone.h"

namespace platform::freedesktop {
namespace {

const std::filesystem::path kFile = "/config/orvello/defaults.json";
const std::filesystem::path kAside = "/config/orvello/defaults.json.corrupt-20260314-090000";

class JsonDefaultsStoreTests : public testing::Test {
  protected:
    JsonDefaultsStore open(std::optional<std::filesystem::path> file = kFile) {
        return {files_, clock_, std::move(file), [this](auto message) { reports_.emplace_back(message); }};
    }

    desktop_test::TimeZone timeZone_{"UTC"};
    simulated::SimulatedFileSystem files_;
    simulated::SimulatedRunLoop clock_;
    std::vector<std::string> reports_;
};

TEST_F(JsonDefaultsStoreTests, KeepsEveryTypeAcrossRuns) {
    const std::vector<DefaultsValue> values = {true,
                                               false,
                                               std::int64_t{0},
                                               std::int64_t{INT64_MIN},
                                               std::int64_t{INT64_MAX},
                                               3.0,
                                               -0.1,
                                               1e300,
                                               std::string(),
                                               std::string("ä\n\"\\\0z", 7),
                                               DefaultsData{},
                                               DefaultsData{R"({"hEdge":"right"})"},
                                               DefaultsData{std::string("\xff\0\x80", 3)},
                                               DefaultsDictionary{},
                                               DefaultsDictionary{{"data", 1}},
                                               DefaultsDictionary{{"x", 100}, {"y", -2.5}}};
    for (const auto& value : values) {
        SCOPED_TRACE(&value - values.data());
        open().set("key", value);
        EXPECT_EQ(open().value("key"), value) << files_.files[kFile];
    }
    EXPECT_TRUE(reports_.empty());
}

TEST_F(JsonDefaultsStoreTests, WritesEveryAssignmentAndNothingElse) {
    {
        auto store = open();
        EXPECT_EQ(store.value("a"), std::nullopt);
        store.remove("a");
    }
    EXPECT_TRUE(files_.writes.empty());
    auto store = open();
    store.set("a", true);
    store.set("a", true);
    store.set("b", std::int64_t{2});
    store.remove("a");
    ASSERT_EQ(files_.writes.size(), 4U);
    EXPECT_EQ(files_.files[kFile], "{\n    \"b\": 2\n}\n");
}

TEST_F(JsonDefaultsStoreTests, LeavesMembersItDoesNotUnderstandAsTheyAre) {
    const std::string text = R"({"bytes": {"bytes": [1, 256]}, "huge": 18446744073709551615, "list": [1],
                                 "mixed": {"x": 1, "y": "no", "z": {"q": []}}, "null": null})";
    files_.put(kFile, text);
    auto store = open();
    for (const char* key : {"huge", "list", "null"}) EXPECT_EQ(store.value(key), std::nullopt) << key;
    EXPECT_EQ(store.value("mixed"), DefaultsValue(DefaultsDictionary{{"x", 1}}));
    EXPECT_EQ(store.value("bytes"), DefaultsValue(DefaultsDictionary{}));
    store.set("new", true);
    auto expected = nlohmann::json::parse(text);
    expected["new"] = true;
    EXPECT_EQ(nlohmann::json::parse(files_.files[kFile]), expected);
}

TEST_F(JsonDefaultsStoreTests, MovesAFileItCannotReadAsideAndStartsAnew) {
    const std::pair<const char*, std::string> rows[] = {
        {"empty", ""},
        {"truncated", R"({"tagSize": "lar)"},
        {"no JSON", "tagSize=large"},
        {"no object", "[1, 2]"},
        {"something after it", "{} {}"},
        {"too deep", "{\"a\":" + std::string(1000000, '[')},
        {"not UTF-8", "{\"a\": \"\xff\"}"},
        {"a number out of range", R"({"a": 1e999})"},
        {"too large", "{\"a\": \"" + std::string(5 << 20, 'x') + "\"}"},
    };
    for (const auto& [name, text] : rows) {
        SCOPED_TRACE(name);
        reports_.clear();
        files_ = {};
        files_.put(kFile, text);
        auto store = open();
        EXPECT_EQ(files_.files, (std::map<std::filesystem::path, std::string>{{kAside, text}}));
        EXPECT_EQ(reports_.size(), 1U);
        store.set("a", true);
        EXPECT_EQ(open().value("a"), DefaultsValue(true));
        EXPECT_EQ(files_.files[kAside], text);
    }
}

TEST_F(JsonDefaultsStoreTests, LivesInMemoryWhenABadFileCannotBeMoved) {
    files_.put(kFile, "{");
    files_.put(kAside, "an earlier one");
    auto store = open();
    store.set("a", true);
    store.set("b", true);
    EXPECT_EQ(store.value("a"), DefaultsValue(true));
    EXPECT_EQ(files_.files[kFile], "{");
    EXPECT_EQ(files_.files[kAside], "an earlier one");
    EXPECT_EQ(reports_.size(), 2U);
}

TEST_F(JsonDefaultsStoreTests, LivesInMemoryWithoutAPlaceToWrite) {
    auto homeless = open(defaultsFilePath(std::nullopt));
    homeless.set("a", true);
    EXPECT_EQ(homeless.value("a"), DefaultsValue(true));
    EXPECT_EQ(reports_.size(), 1U);

    files_.put(kFile, R"({"a": 1})");
    files_.unwritable = {"/config"};
    auto store = open(defaultsFilePath("/config"));
    store.set("a", std::int64_t{2});
    EXPECT_EQ(store.value("a"), DefaultsValue(std::int64_t{2}));
    EXPECT_EQ(files_.files[kFile], R"({"a": 1})");
    EXPECT_EQ(reports_.size(), 2U);
    files_.unwritable.clear();
    store.set("b", true);
    EXPECT_EQ(open().value("a"), DefaultsValue(std::int64_t{2}));
}

TEST_F(JsonDefaultsStoreTests, MovesAFolderInTheFilesPlaceAside) {
    const desktop_test::TemporaryFolder folder;
    const auto file = folder.path() / "defaults.json";
    std::filesystem::create_directories(file / "precious");
    PosixFileSystem files;
    JsonDefaultsStore store(files, clock_, file, [](auto) {});
    store.set("a", true);
    EXPECT_TRUE(std::filesystem::is_regular_file(file));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / kAside.filename() / "precious"));
}

}  // namespace
}  // namespace platform::freedesktop
