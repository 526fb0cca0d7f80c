#include "orvellos/DiagnosticsReport.h"

#include <gtest/gtest.h>

#include "orvellos/ApplicationVersion.h"
#include "orvellos/DebugLog.h"
#include "platform/simulated/SimulatedDefaultsStore.h"
#include "platform/simulated/SimulatedFileBrowser.h"
#include "platform/simulated/SimulatedFileSystem.h"
#include "platform/simulated/SimulatedFolders.h"
#include "platform/simulated/SimulatedLoginItem.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedSystemInformation.h"
#include "tests/support/TimeZone.h"

namespace orvellos {
namespace {

using Paths = std::vector<std::filesystem::path>;

constexpr const char* kName = "orvellos-diagnostics-20260314-090000.txt";

class DiagnosticsReportTests : public testing::Test {
  protected:
    DiagnosticsReportTests() {
        connect(false);
        files_.folders.insert({"/tmp", "/home/user/Desktop"});
    }
    void TearDown() override { connectDebugLog({}); }

    void connect(bool debugging) {
        connectDebugLog({.standardError = [](auto) {}, .clock = &clock_, .echoEnabled = debugging});
    }

    void save(std::span<const Tag> tags = {}) {
        saveDiagnostics({files_, folders_, fileBrowser_, clock_, system_}, settings_, tags);
    }

    desktop_test::TimeZone timeZone_{"UTC"};
    platform::simulated::SimulatedRunLoop clock_;
    platform::simulated::SimulatedFileSystem files_;
    platform::simulated::SimulatedFolders folders_;
    platform::simulated::SimulatedFileBrowser fileBrowser_;
    platform::simulated::SimulatedSystemInformation system_;
    platform::simulated::SimulatedDefaultsStore defaults_;
    platform::simulated::SimulatedLoginItem loginItem_;
    Settings settings_{defaults_, loginItem_, std::nullopt};
};

TEST_F(DiagnosticsReportTests, PutsTheLabelBehindEveryRedactedOne) {
    const auto hash = redactedLabel("Work");
    log(LogCategory::Nav, "to " + hash + " from " + hash + " or #9dc5");
    const TextPair header[] = {{"app", "1"}, {"tags", "2"}};
    const TextPair tags[] = {{redactedLabel(""), ""}, {hash, "Work"}};
    EXPECT_EQ(buildDiagnosticsReport(header, tags),
              "===== orvellos diagnostics report =====\napp: 1\ntags: 2\n\n"
              "--- tags (hash → name) ---\n" +
                  hash + " = Work\n\n--- log timeline (1 lines) ---\n[09:00:00.000] nav to " + hash +
                  "(Work) from " + hash + "(Work) or #9dc5\n");
    EXPECT_EQ(buildDiagnosticsReport({}, {tags, 1}),
              "===== orvellos diagnostics report =====\n\n--- log timeline (1 lines) ---\n"
              "[09:00:00.000] nav to " +
                  hash + " from " + hash + " or #9dc5\n");
}

TEST_F(DiagnosticsReportTests, PutsALabelBehindItselfWhileDebugging) {
    connect(true);
    log(LogCategory::General, "WorkWork");
    const TextPair tags[] = {{redactedLabel("Work"), "Work"}};
    EXPECT_TRUE(
        buildDiagnosticsReport({}, tags).ends_with("Work = Work\n\n--- log timeline (1 lines) ---\n"
                                                   "[09:00:00.000] gen Work(Work)Work(Work)\n"));
}

TEST_F(DiagnosticsReportTests, DescribesTheApplication) {
    files_.put(*system_.executable, "");
    files_.modificationDates[*system_.executable] = clock_.wallNow() + std::chrono::minutes(26);
    const std::vector<Tag> tags(3);
    settings_.showRevealOnSwipe.set(false);
    settings_.killSwitchActive.set(true);
    settings_.visibilityMode.set(TagVisibilityMode::HiddenDuringWork);
    save(tags);
    EXPECT_TRUE(files_.files[folders_.desktopFolder.value() / kName].starts_with(
        "===== orvellos diagnostics report =====\ngenerated: 2026-03-14 09:00:00\napp: " +
        applicationVersionText() +
        "\nbuilt: 2026-03-14 09:26\nbundle: orvellos\nmacOS: Example OS 1.0\n"
        "visibility: Hidden during normal work\nreveal on swipe: off\nscreen-share hide: on\n"
        "space API (pro): available\ntags: 3\n\n--- log"));
    system_.executable.reset();
    EXPECT_EQ(buildDateText(files_, system_), std::nullopt);
}

TEST_F(DiagnosticsReportTests, SavesWhereItCanAndShowsTheFile) {
    const std::filesystem::path desktop = "/home/user/Desktop";
    const std::filesystem::path temporary = "/tmp/";
    folders_.temporaryFolder = temporary;
    struct Row {
        const char* name;
        std::optional<std::filesystem::path> desktop;
        Paths taken;
        std::set<std::filesystem::path> unwritable;
        Paths shown;
        std::string failure;
    };
    const Row rows[] = {
        {"Desktop", desktop, {desktop / kName}, {}, {desktop / kName}, ""},
        {"no Desktop", {}, {}, {}, {temporary / kName}, ""},
        {"no Desktop, planted", {}, {temporary / kName}, {}, {}, "rename: File exists"},
        {"Desktop not writable", desktop, {}, {desktop}, {temporary / kName}, "open: Permission denied"},
        {"nothing writable", desktop, {}, {"/"}, {}, "open: Permission denied"}};
    const auto before = files_;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        connect(false);
        files_ = before;
        fileBrowser_.revealed.clear();
        folders_.desktopFolder = row.desktop;
        for (const auto& path : row.taken) files_.put(path, "somebody's");
        files_.unwritable = row.unwritable;
        save();
        EXPECT_EQ(fileBrowser_.revealed, row.shown);
        EXPECT_EQ(files_.writes.size(), row.shown.size());
        const auto line =
            "[09:00:00.000] nav saveDiagnostics: Desktop write failed (" + row.failure + "); trying temp dir";
        EXPECT_EQ(timelineSnapshot(), std::vector<std::string>(row.failure.empty() ? 0 : 1, line));
    }
}

}  // namespace
}  // namespace orvellos
