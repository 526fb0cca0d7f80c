#include "platform/freedesktop/files/AutostartLoginItem.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Text.h"

namespace platform::freedesktop {

namespace {

constexpr std::string_view kMainGroup = "[Desktop Entry]";
constexpr std::string_view kHiddenKey = "Hidden";

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view space = " \t\r";
    const auto first = text.find_first_not_of(space);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(space) - first + 1);
}

// One argument of an Exec line (Desktop Entry Specification, "The Exec key"): quoted for the command line,
// its percent signs no field codes, then escaped as every string of an entry is.
std::string execArgument(std::string_view argument) {
    std::string quoted = "\"";
    for (const char c : argument) {
        if (c == '"' || c == '`' || c == '$') quoted += R"(\\)";
        if (c == '\\') quoted += R"(\\\)";
        if (c == '%') quoted += '%';
        if (c == '\n')
            quoted += R"(\n)";
        else
            quoted += c;
    }
    return quoted + '"';
}

// The lines of an entry, and which of them belong to its main group.
class DesktopEntry {
  public:
    explicit DesktopEntry(std::string_view text) {
        for (const auto line : split(text, '\n')) lines_.emplace_back(line);
        const auto isMain = [](const std::string& line) { return trimmed(line) == kMainGroup; };
        const auto isHeader = [](const std::string& line) { return line.starts_with('['); };
        const auto header = std::ranges::find_if(lines_, isMain);
        hasMainGroup_ = header != lines_.end();
        const auto first = hasMainGroup_ ? header + 1 : header;
        before_ = first - lines_.begin();
        after_ = lines_.end() - std::find_if(first, lines_.end(), isHeader);
    }

    // Whether a session would start it.
    [[nodiscard]] bool isOn() const {
        const auto isOff = [](const std::string& line) {
            return is(line, kHiddenKey, "true") || is(line, "X-GNOME-Autostart-enabled", "false");
        };
        return hasMainGroup_ && std::none_of(lines_.begin() + before_, lines_.end() - after_, isOff);
    }

    [[nodiscard]] std::string hiddenText() && {
        const auto hides = [](const std::string& line) { return keyOf(line) == kHiddenKey; };
        const auto end = lines_.end() - after_;
        lines_.erase(std::remove_if(lines_.begin() + before_, end, hides), end);
        lines_.insert(lines_.begin() + before_, fmt::format("{}=true", kHiddenKey));
        return fmt::format("{}", fmt::join(lines_, "\n"));
    }

  private:
    // Empty for a line that assigns nothing.
    static std::string_view keyOf(std::string_view line) {
        const auto equals = line.find('=');
        return equals == std::string_view::npos ? std::string_view() : trimmed(line.substr(0, equals));
    }
    static bool is(std::string_view line, std::string_view key, std::string_view value) {
        return keyOf(line) == key && trimmed(line.substr(line.find('=') + 1)) == value;
    }

    std::vector<std::string> lines_;
    std::ptrdiff_t before_ = 0;  // how many lines are not of the main group at the start, its header included
    std::ptrdiff_t after_ = 0;   // and at the end
    bool hasMainGroup_ = false;
};

}  // namespace

AutostartLoginItem::AutostartLoginItem(FileSystem& files,
                                       const std::optional<std::filesystem::path>& configHome,
                                       std::filesystem::path executable)
    : files_(files), executable_(std::move(executable)) {
    if (configHome) entry_ = *configHome / "autostart" / "org.norvath.orvello.desktop";
}

bool AutostartLoginItem::isEnabled() const {
    if (!entry_) return false;
    const auto text = files_.read(*entry_);
    return text && DesktopEntry(text.value()).isOn();
}

MaybeError AutostartLoginItem::enable() {
    if (!entry_) return Error{"there is no folder for the user's settings"};
    if (auto error = files_.createFolders(entry_->parent_path())) return error;
    return files_.writeAtomically(*entry_, fmt::format("{}\n"
                                                       "Type=Application\n"
                                                       "Name=orvellos\n"
                                                       "Comment=Labels for your Spaces\n"
                                                       "Exec={}\n"
                                                       "Icon=org.norvath.orvello\n"
                                                       "Terminal=false\n"
                                                       "StartupNotify=false\n",
                                                       kMainGroup, execArgument(executable_.native())));
}

MaybeError AutostartLoginItem::disable() {
    if (!entry_ || !files_.exists(*entry_)) return std::nullopt;
    const auto text = files_.read(*entry_);
    if (!text) return text.error();
    DesktopEntry entry(text.value());
    if (!entry.isOn()) return std::nullopt;
    return files_.writeAtomically(*entry_, std::move(entry).hiddenText());
}

}  // namespace platform::freedesktop
