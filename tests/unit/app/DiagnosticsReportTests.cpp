#include "orvellos/app/DiagnosticsReport.h"

#include <fmt/format.h>

#include "orvellos/base/ApplicationVersion.h"
#include "tests/support/ApplicationTest.h"

namespace orvellos {
namespace {

using Path = std::filesystem::path;
using Paths = std::vector<Path>;

constexpr const char* kName = "orvellos-diagnostics-20260314-143000.txt";
constexpr const char* kSecondName = "orvellos-diagnostics-20260314-143000-2.txt";

class DiagnosticsReportTests : public ApplicationTest {
  protected:
    DiagnosticsReportTests() { desktop_.files.folders.insert({"/tmp", "/home/user/Desktop"}); }

    void save(std::span<const Tag> tags = {}) {
        auto& d = desktop_;
        saveDiagnostics({d.files, d.folders, d.fileBrowser, d.runLoop, d.system}, settings_, tags);
    }
};

TEST_F(DiagnosticsReportTests, PutsTheLabelBehindEveryRedactedOne) {
    struct Row {
        bool debugging;
        std::string logged, shown;
    };
    const auto hash = redactedLabel("Work");
    for (const auto& row : {Row{false, fmt::format("{0} from {0} or #9dc5", hash),
                                fmt::format("{0}(Work) from {0}(Work) or #9dc5", hash)},
                            Row{true, "WorkWork", "Work(Work)Work(Work)"}}) {
        connectLog(row.debugging);
        log(LogCategory::Nav, row.logged);
        const TextPair header[] = {{"app", "1"}, {"tags", "2"}};
        const TextPair tags[] = {{redactedLabel(""), ""}, {redactedLabel("Work"), "Work"}};
        EXPECT_EQ(buildDiagnosticsReport(header, tags),
                  "===== orvellos diagnostics report =====\napp: 1\ntags: 2\n\n"
                  "--- tags (hash → name) ---\n" +
                      tags[1].first + " = Work\n\n--- log timeline (1 lines) ---\n[14:30:00.000] nav " +
                      row.shown + "\n");
        EXPECT_EQ(buildDiagnosticsReport({}, {tags, 1}),
                  "===== orvellos diagnostics report =====\n\n--- log timeline (1 lines) ---\n"
                  "[14:30:00.000] nav " +
                      row.logged + "\n");
    }
}

TEST_F(DiagnosticsReportTests, DescribesTheApplication) {
    desktop_.files.now = desktop_.runLoop.wallNow() + std::chrono::minutes(26);
    desktop_.files.put(*desktop_.system.executable, "");
    settings_.showRevealOnSwipe.set(false);
    settings_.killSwitchActive.set(true);
    settings_.visibilityMode.set(TagVisibilityMode::HiddenDuringWork);
    save(std::vector<Tag>(3));
    EXPECT_TRUE(desktop_.files.files[*desktop_.folders.desktopFolder / kName].starts_with(
        "===== orvellos diagnostics report =====\ngenerated: 2026-03-14 14:30:00\napp: " +
        applicationVersionText() +
        "\nbuilt: 2026-03-14 14:56\nbundle: orvellos\nmacOS: Example OS 1.0\n"
        "visibility: Hidden during normal work\nreveal on swipe: off\nscreen-share hide: on\n"
        "space API (pro): available\ntags: 3\n\n--- log"));
    desktop_.system.executable.reset();
    EXPECT_EQ(buildDateText(desktop_.files, desktop_.system), std::nullopt);
}

TEST_F(DiagnosticsReportTests, SavesWhereItCanAndShowsTheFile) {
    const Path desktop = "/home/user/Desktop";
    const Path temporary = "/tmp/";
    struct Row {
        const char* name;
        std::optional<Path> desktop;
        Paths taken;
        std::set<Path> unwritable;
        Paths shown;
        std::string failure;
    };
    const Row rows[] = {
        {"Desktop", desktop, {}, {}, {desktop / kName}, ""},
        {"Desktop, again", desktop, {desktop / kName}, {}, {desktop / kSecondName}, ""},
        {"no Desktop", {}, {}, {}, {temporary / kName}, ""},
        {"no Desktop, again", {}, {temporary / kName}, {}, {temporary / kSecondName}, ""},
        {"Desktop not writable", desktop, {}, {desktop}, {temporary / kName}, "open: Permission denied"},
        {"nothing writable", desktop, {}, {"/"}, {}, "open: Permission denied"}};
    const auto before = desktop_.files;
    desktop_.folders.temporaryFolder = temporary;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        connectLog(false);
        desktop_.files = before;
        desktop_.fileBrowser.revealed.clear();
        desktop_.folders.desktopFolder = row.desktop;
        for (const auto& path : row.taken) desktop_.files.put(path, "somebody's");
        desktop_.files.unwritable = row.unwritable;
        save();
        EXPECT_EQ(desktop_.fileBrowser.revealed, row.shown);
        EXPECT_EQ(desktop_.files.writes.size(), row.shown.size());
        EXPECT_EQ(logged(), Texts(row.failure.empty() ? 0 : 1, "saveDiagnostics: Desktop write failed (" +
                                                                   row.failure + "); trying temp dir"));
    }
}

}  // namespace
}  // namespace orvellos
