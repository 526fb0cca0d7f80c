#include "orvellos/commandline/OrvelloCLI.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>

#include "orvellos/base/PrettyJson.h"
#include "orvellos/commandline/TagLabels.h"
#include "orvellos/spaces/SpaceSwitcher.h"

namespace orvellos {

namespace {

using Json = nlohmann::json;

// The whole text as a decimal integer with an optional sign.
std::optional<std::int64_t> integer(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    std::int64_t value = 0;
    const auto* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) return std::nullopt;
    return value;
}

std::int64_t truncated(double value) {
    constexpr double kLimit = 9.2e18;
    if (std::isnan(value)) return 0;
    return static_cast<std::int64_t>(std::clamp(value, -kLimit, kLimit));
}

std::optional<std::size_t> positionOf(const std::string& uuid, const std::vector<std::string>& uuids) {
    const auto found = std::ranges::find(uuids, uuid);
    if (found == uuids.end()) return std::nullopt;
    return static_cast<std::size_t>(found - uuids.begin());
}

template <typename T>
void addMember(Json& object, const char* key, const std::optional<T>& value) {
    if (value) object[key] = *value;
}

Json json(const SpaceRow& row) {
    Json object = {{"index", row.index}, {"uuid", row.uuid}, {"current", row.current}};
    addMember(object, "tag", row.tag);
    return object;
}

Json json(const WindowRow& row) {
    Json object = {{"cgwindowid", row.cgwindowid},
                   {"pid", row.pid},
                   {"x", row.x},
                   {"y", row.y},
                   {"w", row.w},
                   {"h", row.h}};
    addMember(object, "owner", row.owner);
    addMember(object, "spaceIndex", row.spaceIndex);
    addMember(object, "space", row.space);
    return object;
}

std::string lines(const Json& rows) {
    return prettyJson(rows) + "\n";
}

}  // namespace

std::optional<OrvelloCLI::Command> OrvelloCLI::commandOf(std::span<const std::string_view> arguments) {
    if (arguments.empty()) return std::nullopt;
    if (arguments[0] == "dump") return Command::Dump;
    if (arguments[0] == "goto") return Command::Goto;
    if (arguments[0] == "windows") return Command::Windows;
    return std::nullopt;
}

int OrvelloCLI::run(Command command, std::span<const std::string_view> arguments) const {
    switch (command) {
        case Command::Dump:
            dump();
            return 0;
        case Command::Goto:
            return goTo(arguments.size() > 1 ? arguments[1] : std::string_view()) ? 0 : 1;
        case Command::Windows:
            windows();
            return 0;
    }
    return 1;
}

void OrvelloCLI::dump() const {
    const auto ordered = services_.spaces.orderedSpaceUUIDs();
    const auto current = services_.spaces.currentSpaceUUIDs();
    const TagLabels labels(services_.readTagFile().value_or(""));
    auto rows = Json::array();
    for (const auto& uuid : ordered) {
        const auto index = static_cast<std::int64_t>(rows.size()) + 1;
        rows.push_back(json(SpaceRow{index, uuid, current.contains(uuid), labels.labelOf(uuid)}));
    }
    services_.standardOutput(lines(rows));
}

bool OrvelloCLI::goTo(std::string_view target) const {
    if (target.empty()) {
        complain("usage: orvello goto <uuid|index>");
        return false;
    }
    const auto ordered = services_.spaces.orderedSpaceUUIDs();
    if (ordered.empty()) {
        complain("no Spaces reported — is this the pro (private-API) build?");
        return false;
    }
    const auto uuid = resolve(target, ordered);
    if (!uuid) return false;
    return services_.spaces.currentSpaceUUIDs().contains(*uuid) || switchByScript(*uuid) ||
           services_.switchToSpace(*uuid);
}

// Complains when the target names no Space.
std::optional<std::string> OrvelloCLI::resolve(std::string_view target,
                                               const std::vector<std::string>& ordered) const {
    if (const auto index = integer(target)) {
        if (*index >= 1 && *index <= static_cast<std::int64_t>(ordered.size()))
            return ordered[static_cast<std::size_t>(*index) - 1];
        complain(fmt::format("no Space at index {} (have {})", *index, ordered.size()));
        return std::nullopt;
    }
    if (const auto listed = std::ranges::find(ordered, target); listed != ordered.end()) return *listed;
    auto labelled = TagLabels(services_.readTagFile().value_or("")).spaceMatching(target);
    if (!labelled)
        complain(fmt::format("no Space matches '{}' — expected a uuid, 1-based index, or tag label", target));
    return labelled;
}

bool OrvelloCLI::switchByScript(const std::string& uuid) const {
    const auto target = positionOf(uuid, services_.spaces.orderedSpaceUUIDsOnPointerDisplay());
    if (!target) return false;
    const auto current = services_.spaces.currentSpaceIndexOnPointerDisplay();
    if (!current) return false;
    const auto delta = static_cast<int>(*target) - static_cast<int>(*current);
    if (delta == 0) return true;
    const auto script = SpaceScript::forDistance(delta);
    const std::vector<std::string> arguments = {"-e", script.text(SpaceScript::Layout::CommandLine)};
    return services_.childProcesses.run(kScriptRunner, arguments) == 0;
}

void OrvelloCLI::windows() const {
    const auto list = services_.windows.copyWindowsExcludingDesktopElements();
    auto rows = Json::array();
    if (list) {
        const auto ordered = services_.spaces.orderedSpaceUUIDs();
        for (const auto& window : *list)
            if (const auto line = row(window, ordered)) rows.push_back(json(*line));
    }
    services_.standardOutput(lines(rows));
}

std::optional<WindowRow> OrvelloCLI::row(const platform::WindowInfo& window,
                                         const std::vector<std::string>& ordered) const {
    if (window.layer != 0 || !window.number) return std::nullopt;
    WindowRow row;
    row.cgwindowid = *window.number;
    row.pid = window.ownerPid.value_or(-1);
    row.owner = window.ownerName;
    const auto bounds = window.bounds.value_or(platform::Rect{});
    row.x = truncated(bounds.x);
    row.y = truncated(bounds.y);
    row.w = truncated(bounds.width);
    row.h = truncated(bounds.height);
    const auto ids = services_.spaces.spaceIDsForWindow({*window.number});
    if (ids.empty()) return row;
    row.space = services_.spaces.spaceUUID(ids.front());
    if (!row.space) return row;
    if (const auto position = positionOf(*row.space, ordered))
        row.spaceIndex = static_cast<std::int64_t>(*position) + 1;
    return row;
}

void OrvelloCLI::complain(std::string_view message) const {
    services_.standardError(std::string(message) + "\n");
}

}  // namespace orvellos
