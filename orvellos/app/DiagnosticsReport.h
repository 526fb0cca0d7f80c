#pragma once

#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "orvellos/settings/Settings.h"
#include "orvellos/tags/Tag.h"
#include "platform/Files.h"
#include "platform/RunLoop.h"
#include "platform/System.h"

namespace orvellos {

using TextPair = std::pair<std::string, std::string>;

// A text the user can send: the header (key, value), a table of the tags (redacted label, label) without the
// nameless ones, and the timeline of the log with the label behind every redacted one.
[[nodiscard]] std::string buildDiagnosticsReport(std::span<const TextPair> header,
                                                 std::span<const TextPair> tags);

// When the running program was built, in local time: "2026-03-14 09:26". Absent when that cannot be found.
[[nodiscard]] std::optional<std::string> buildDateText(const platform::FileSystem& files,
                                                       const platform::SystemInformation& system);

// What a report is collected from and saved with.
struct DiagnosticsServices {
    platform::FileSystem& files;
    const platform::Folders& folders;
    platform::FileBrowser& fileBrowser;
    const platform::RunLoop& clock;
    const platform::SystemInformation& system;
};

// The report's header for this state of the application.
[[nodiscard]] std::vector<TextPair> diagnosticsHeader(const DiagnosticsServices& services,
                                                      const Settings& settings, std::size_t tagCount);

// Writes the report to the user's Desktop, else to the temporary folder, and shows the file. A second one of
// the same second has a number at the end of its name. A failure of the Desktop is logged, one of both is
// silent.
void saveDiagnostics(const DiagnosticsServices& services, const Settings& settings,
                     std::span<const Tag> tags);

}  // namespace orvellos
