#include "orvellos/menu/StatusItemController.h"

#include <fmt/format.h>

#include "orvellos/base/ApplicationVersion.h"
#include "orvellos/settings/HotkeyNames.h"
#include "orvellos/tags/Labels.h"
#include "orvellos/tags/TagColor.h"

namespace orvellos {

namespace {

using platform::MenuItem;
namespace modifier = platform::modifier;

constexpr MenuItem::Kind kSeparator = MenuItem::Kind::Separator;

constexpr std::string_view kNoSpaceList = "⚠ Space detection unavailable on this macOS";
constexpr std::string_view kNoSpaceListHelp =
    "orvellos couldn't read the system's Space list — per-Space binding is paused. This usually follows a "
    "macOS update; check for a orvellos update.";
constexpr std::string_view kHideHelp =
    "On: tags stay hidden during normal work and reveal on a Space switch, Mission Control, or peek. Off: "
    "tags are always visible.";
constexpr std::string_view kDiagnosticsHelp =
    "Write a log of recent tag activity to the Desktop so you can email it for support.";

}  // namespace

StatusItemController::StatusItemController(const Services& services) : services_(services) {
    services_.statusItem.setMenu([this] { return buildMenu(); });
    services_.statusItem.setTitle(title());
    cancellables_.push_back(services_.manager.subscribe([this] { refreshLater(); }));
    cancellables_.push_back(services_.settings.killSwitchActive.subscribe([this](auto) { refreshLater(); }));
    cancellables_.push_back(services_.settings.visibilityMode.subscribe([this](auto) { refreshLater(); }));
}

// All changes in one turn of the main loop cause one update.
void StatusItemController::refreshLater() {
    refresh_ = services_.runLoop.after(platform::Duration::zero(),
                                       [this] { services_.statusItem.setTitle(title()); });
}

const Tag* StatusItemController::find(const std::optional<TagID>& id) const {
    return id ? tagWithID(services_.manager.tags(), *id) : nullptr;
}

platform::StatusTitle StatusItemController::title() const {
    const bool killed = services_.settings.killSwitchActive.get();
    if (!killed && services_.settings.visibilityMode.get() == TagVisibilityMode::AlwaysVisible) return {};
    platform::StatusTitle title{.hasHiddenSymbol = killed, .label = {}};
    if (const auto* tag = find(services_.manager.activeTagID()))
        title.label = {tagColor(*tag), shortLabel(tag->label)};
    return title;
}

std::vector<MenuItem> StatusItemController::buildMenu() const {
    Menu menu;
    if (!services_.manager.tags().empty()) addHiddenState(menu);
    addWarnings(menu);
    addCurrentSpace(menu);
    addSpaces(menu);
    menu.push_back({.kind = kSeparator});
    addCommands(menu);
    menu.push_back({.kind = kSeparator});
    addApplication(menu);
    menu.push_back({.kind = kSeparator});
    menu.push_back({.kind = MenuItem::Kind::Fineprint, .title = applicationVersionText()});
    return menu;
}

std::string StatusItemController::suffix(const keyboard_shortcuts::Name& name) const {
    const auto text = services_.hotkeys.displayText(name);
    return text ? " (" + *text + ")" : "";
}

void StatusItemController::addHiddenState(Menu& menu) const {
    auto& settings = services_.settings;
    MenuItem row{.symbol = "eye.slash"};
    if (settings.killSwitchActive.get()) {
        row.title = "Tags hidden for screen-share" + suffix(hotkey::toggleKillSwitch) + " — click to show";
        row.action = [&settings] { settings.killSwitchActive.set(false); };
    } else if (settings.visibilityMode.get() == TagVisibilityMode::HiddenDuringWork) {
        row.title = "Tags hidden during work — click to peek" + suffix(hotkey::peekTags);
        row.action = [this] {
            services_.manager.peekBegin();
            services_.manager.peekEnd();
        };
    } else {
        return;
    }
    menu.push_back(std::move(row));
    menu.push_back({.kind = kSeparator});
}

void StatusItemController::addWarnings(Menu& menu) const {
    if (!services_.manager.tags().empty() && services_.spaces.orderedSpaceUUIDs().empty()) {
        menu.push_back({.title = std::string(kNoSpaceList), .toolTip = std::string(kNoSpaceListHelp)});
        menu.push_back({.kind = kSeparator});
    }
    const auto remedy = services_.manager.neededRemedy();
    if (!remedy) return;
    menu.push_back({.title = remedy == NavRemedy::Accessibility
                                 ? "⚠ Grant Accessibility to enable click-to-switch"
                                 : "⚠ Enable ⌃←/⌃→ to use click-to-switch",
                    .action = [this, remedy] { services_.manager.openSettings(*remedy); }});
    menu.push_back({.kind = kSeparator});
}

void StatusItemController::addCurrentSpace(Menu& menu) const {
    if (const auto* tag = find(services_.manager.tagIDForCurrentSpace())) {
        menu.push_back({.title = "Untag this Space",
                        .action = [this, id = tag->id] { services_.manager.deleteTag(id); },
                        .symbol = "minus.circle.fill",
                        .toolTip = "Remove the " + quotedLabel(tag->label) + " tag"});
    } else {
        menu.push_back(
            {.title = "Tag this Space…",
             .action =
                 [this] {
                     services_.panels.showCreatePanel(services_.spaces.currentSpaceUUIDOnPointerDisplay());
                 },
             .symbol = "plus.circle.fill",
             .toolTip = "Give the current Desktop a label and color",
             .keyEquivalent = {{'t', modifier::kControl | modifier::kOption | modifier::kCommand}}});
    }
    menu.push_back({.kind = kSeparator});
}

void StatusItemController::addSpaces(Menu& menu) const {
    const auto& manager = services_.manager;
    const auto rows =
        manager.menuRows([this] { return services_.spaces.orderedSpaceUUIDsOnPointerDisplay(); });
    for (const auto& row : rows) {
        if (row.tag) {
            menu.push_back(tagRow(*row.tag,
                                  fmt::format("Desktop {}: {}", row.displayIndex, shortLabel(row.tag->label)),
                                  row.isActive));
            menu.push_back(reassignRow(*row.tag));
        } else {
            menu.push_back(untaggedRow(row));
        }
    }
    if (!rows.empty()) return;
    if (manager.tags().empty()) menu.push_back({.title = "No tags yet"});
    const auto current = manager.tagIDForCurrentSpace();
    for (const auto& tag : manager.tags())
        menu.push_back(tagRow(tag, shortLabel(tag.label), tag.id == current));
}

std::string StatusItemController::jumpToolTip(std::string_view text) const {
    return canJump() ? std::string(text) : "Jump disabled — grant permissions above";
}

MenuItem StatusItemController::tagRow(const Tag& tag, std::string title, bool checked) const {
    MenuItem row{.title = std::move(title),
                 .checked = checked,
                 .dot = tagColor(tag),
                 .toolTip = jumpToolTip("Jump to this Space")};
    if (canJump()) row.action = [this, id = tag.id] { services_.manager.navigateToTagID(id); };
    return row;
}

MenuItem StatusItemController::reassignRow(const Tag& tag) const {
    return {.title = "Reassign " + quotedLabel(tag.label) + " here",
            .action = [this, id = tag.id] { services_.manager.assignTagToSpace(id); },
            .dot = tagColor(tag),
            .isAlternate = true};
}

MenuItem StatusItemController::untaggedRow(const MenuSpaceRow& space) const {
    MenuItem row{.title = fmt::format("Desktop {}", space.displayIndex),
                 .checked = space.isActive,
                 .hasFaintDot = true,
                 .toolTip = jumpToolTip(fmt::format("Jump to untagged Desktop {}", space.displayIndex))};
    if (canJump()) row.action = [this, uuid = space.spaceUUID] { services_.manager.navigateToSpace(uuid); };
    return row;
}

void StatusItemController::addCommands(Menu& menu) const {
    auto& settings = services_.settings;
    auto& panels = services_.panels;
    const bool hides = settings.visibilityMode.get() == TagVisibilityMode::HiddenDuringWork;
    menu.push_back({.title = "Edit Tags…", .action = [&panels] { panels.showEditPanel(); }});
    menu.push_back({.title = "Jump to Space…",
                    .action = [&panels] { panels.showQuickSwitcher(); },
                    .symbol = "magnifyingglass",
                    .toolTip = "Search Spaces by tag and jump"});
    menu.push_back({.title = "Hide Tags During Normal Work",
                    .action =
                        [&settings] {
                            const auto mode = settings.visibilityMode.get();
                            settings.visibilityMode.set(mode == TagVisibilityMode::HiddenDuringWork
                                                            ? TagVisibilityMode::AlwaysVisible
                                                            : TagVisibilityMode::HiddenDuringWork);
                        },
                    .checked = hides,
                    .toolTip = std::string(kHideHelp)});
    menu.push_back(
        {.title = "Hide Tags for Screen-Sharing" + suffix(hotkey::toggleKillSwitch),
         .action = [&settings] { settings.killSwitchActive.set(!settings.killSwitchActive.get()); },
         .checked = settings.killSwitchActive.get(),
         .symbol = "eye.slash"});
    menu.push_back({.title = "Settings…",
                    .action = [&panels] { panels.showSettingsPanel(); },
                    .keyEquivalent = {{',', modifier::kCommand}}});
}

void StatusItemController::addApplication(Menu& menu) const {
    auto& commands = services_.commands;
    menu.push_back({.title = "Check for Updates…",
                    .action = [&commands] { commands.checkForUpdates(); },
                    .symbol = "arrow.down.circle"});
    menu.push_back({.title = "Save Diagnostics Report…",
                    .action = [&commands] { commands.saveDiagnostics(); },
                    .symbol = "square.and.arrow.up",
                    .toolTip = std::string(kDiagnosticsHelp)});
    menu.push_back({.title = "About orvellos",
                    .action = [this] { services_.panels.showAbout(); },
                    .symbol = "info.circle"});
    menu.push_back({.title = "Quit orvellos",
                    .action = [&commands] { commands.terminate(); },
                    .keyEquivalent = {{'q', modifier::kCommand}}});
}

}  // namespace orvellos
