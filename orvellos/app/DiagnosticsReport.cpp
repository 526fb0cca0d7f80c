#include "orvellos/app/DiagnosticsReport.h"

#include <fmt/format.h>

#include <string_view>

#include "orvellos/base/ApplicationVersion.h"
#include "orvellos/base/DebugLog.h"
#include "platform/System.h"

namespace orvellos {

namespace {

void replaceAll(std::string& text, std::string_view what, std::string_view replacement) {
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + replacement.size()))
        text.replace(at, what.size(), replacement);
}

const char* onOrOff(bool on) {
    return on ? "on" : "off";
}

std::vector<TextPair> redactedLabels(std::span<const Tag> tags) {
    std::vector<TextPair> pairs;
    for (const auto& tag : tags) pairs.emplace_back(redactedLabel(tag.label), tag.label);
    return pairs;
}

// A name in the folder that no report of the same second has.
std::filesystem::path freeName(const platform::FileSystem& files, const std::filesystem::path& folder,
                               const std::string& name) {
    constexpr int kMost = 100;
    auto file = folder / (name + ".txt");
    for (int i = 2; i <= kMost && files.exists(file); ++i) file = folder / fmt::format("{}-{}.txt", name, i);
    return file;
}

// Shows the file once it is written. In the temporary folder, which may be everybody's, nothing is written
// through a name that is there already.
platform::MaybeError writeAndReveal(const DiagnosticsServices& services, const std::filesystem::path& folder,
                                    const std::string& name, const std::string& report) {
    const auto file = freeName(services.files, folder, name);
    auto error = folder == services.folders.temporary() ? services.files.writeNew(file, report)
                                                        : services.files.writeAtomically(file, report);
    if (!error) services.fileBrowser.reveal(file);
    return error;
}

}  // namespace

std::string buildDiagnosticsReport(std::span<const TextPair> header, std::span<const TextPair> tags) {
    std::string report = "===== orvellos diagnostics report =====\n";
    for (const auto& [key, value] : header) report += fmt::format("{}: {}\n", key, value);
    report += '\n';

    std::vector<TextPair> named(tags.begin(), tags.end());
    std::erase_if(named, [](const TextPair& tag) { return tag.second.empty(); });
    if (!named.empty()) {
        report += "--- tags (hash → name) ---\n";
        for (const auto& [hash, label] : named) report += fmt::format("{} = {}\n", hash, label);
        report += '\n';
    }

    const auto timeline = timelineSnapshot();
    report += fmt::format("--- log timeline ({} lines) ---\n", timeline.size());
    for (auto line : timeline) {
        for (const auto& [hash, label] : named) replaceAll(line, hash, fmt::format("{}({})", hash, label));
        report += line + '\n';
    }
    return report;
}

std::optional<std::string> buildDateText(const platform::FileSystem& files,
                                         const platform::SystemInformation& system) {
    const auto executable = system.executablePath();
    const auto date = executable ? files.modificationDate(*executable) : std::nullopt;
    if (!date) return std::nullopt;
    return platform::localTimeText(*date, "%Y-%m-%d %H:%M");
}

std::vector<TextPair> diagnosticsHeader(const DiagnosticsServices& services, const Settings& settings,
                                        std::size_t tagCount) {
    return {{"generated", platform::localTimeText(services.clock.wallNow(), "%Y-%m-%d %H:%M:%S")},
            {"app", applicationVersionText()},
            {"built", buildDateText(services.files, services.system).value_or("unknown")},
            {"bundle", "orvellos"},
            {"macOS", services.system.operatingSystemVersion()},
            {"visibility", std::string(title(settings.visibilityMode.get()))},
            {"reveal on swipe", onOrOff(settings.showRevealOnSwipe.get())},
            {"screen-share hide", onOrOff(settings.killSwitchActive.get())},
            {"space API (pro)", "available"},
            {"tags", std::to_string(tagCount)}};
}

void saveDiagnostics(const DiagnosticsServices& services, const Settings& settings,
                     std::span<const Tag> tags) {
    const auto report =
        buildDiagnosticsReport(diagnosticsHeader(services, settings, tags.size()), redactedLabels(tags));
    const auto name =
        "orvellos-diagnostics-" + platform::localTimeText(services.clock.wallNow(), "%Y%m%d-%H%M%S");
    const auto temporary = services.folders.temporary();
    const auto folder = services.folders.desktop().value_or(temporary);
    const auto error = writeAndReveal(services, folder, name, report);
    if (!error) return;
    log(LogCategory::Nav,
        fmt::format("saveDiagnostics: Desktop write failed ({}); trying temp dir", error->description));
    (void)writeAndReveal(services, temporary, name, report);
}

}  // namespace orvellos
