#include "platform/freedesktop/files/JsonDefaultsStore.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/simulated/SimulatedFiles.h"
#include "platform/simulated/SimulatedRunLoop.h"
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
    using Integer = std::int64_t;
    const std::string text("ä\n\"\\\0z", 7);
    const std::string bytes("\xff\0\x80", 3);
    const DefaultsValue values[] = {true,
                                    false,
                                    Integer{0},
                                    Integer{INT64_MIN},
                                    Integer{INT64_MAX},
                                    3.0,
                                    -0.1,
                                    1e300,
                                    std::string(),
                                    text,
                                    DefaultsData{},
                                    DefaultsData{R"({"hEdge":"right"})"},
                                    DefaultsData{bytes},
                                    DefaultsDictionary{},
                                    DefaultsDictionary{{"data", 1}},
                                    DefaultsDictionary{{"x", 100}, {"y", -2.5}}};
    for (const auto& value : values) {
        SCOPED_TRACE(&value - values);
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
    files_ = {};
    files_.put(kFile / "precious", "");
    open().set("a", true);
    EXPECT_EQ(open().value("a"), DefaultsValue(true)) << "a folder in the file's place";
    EXPECT_TRUE(files_.folders.contains(kAside));
}

TEST_F(JsonDefaultsStoreTests, LivesInMemoryWhereItCannotWrite) {
    struct Row {
        const char* name;
        std::optional<std::filesystem::path> folder;
        std::map<std::filesystem::path, std::string> files;
        std::set<std::filesystem::path> unwritable;
        std::size_t reports;
    };
    const Row rows[] = {{"no folder", std::nullopt, {}, {}, 1},
                        {"a bad file that stays", "/config", {{kFile, "{"}, {kAside, "older"}}, {}, 2},
                        {"a folder that stays as it is", "/config", {{kFile, "{}"}}, {"/config"}, 2}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        reports_.clear();
        files_ = {};
        for (const auto& [path, text] : row.files) files_.put(path, text);
        files_.unwritable = row.unwritable;
        auto store = open(defaultsFilePath(row.folder));
        store.set("a", true);
        store.set("b", true);
        EXPECT_EQ(store.value("a"), DefaultsValue(true));
        EXPECT_EQ(files_.files, row.files);
        EXPECT_EQ(reports_.size(), row.reports);
        if (row.unwritable.empty()) continue;
        files_.unwritable.clear();
        store.remove("b");
        EXPECT_EQ(files_.files[kFile], "{\n    \"a\": true\n}\n") << "all of it once it can";
    }
}

}  // namespace
}  // namespace platform::freedesktop
