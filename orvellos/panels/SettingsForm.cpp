#include "orvellos/panels/SettingsForm.h"

#include <algorithm>
#include <array>
#include <utility>

#include "orvellos/base/ApplicationVersion.h"
#include "orvellos/settings/HotkeyNames.h"

namespace orvellos {

namespace {

// A picker among these values of a setting, by their titles.
template <typename Value, std::size_t Count>
PickerRow picker(std::string name, Setting<Value>& setting, const std::array<Value, Count>& values,
                 std::string_view (*titleOf)(Value), std::string footnote) {
    std::vector<std::string> options;
    options.reserve(Count);
    for (const auto value : values) options.emplace_back(titleOf(value));
    const auto selected = [&setting, values]() -> std::optional<std::size_t> {
        const auto* found = std::ranges::find(values, setting.get());
        if (found == values.end()) return std::nullopt;
        return static_cast<std::size_t>(found - values.begin());
    };
    const auto choose = [&setting, values](std::size_t index) { setting.set(values.at(index)); };
    return {std::move(name), std::move(options), selected, choose, std::move(footnote)};
}

// Of a size on the ladder.
std::string_view ladderTitle(TagSize size) {
    constexpr std::array<std::string_view, tagSizeLadder.size()> kTitles = {"XS", "S", "M", "L", "XL"};
    return kTitles.at(static_cast<std::size_t>(size));
}

ToggleRow toggle(std::string title, Setting<bool>& setting, std::string footnote) {
    return {std::move(title), [&setting] { return setting.get(); }, [&setting](bool on) { setting.set(on); },
            std::move(footnote)};
}

SettingsSection appearance(Settings& settings) {
    constexpr std::array kShapes = {TagShape::Tag, TagShape::Pill};
    return {
        "Appearance",
        {picker("Shape", settings.globalTagShape, kShapes, title,
                "Pill is the rounded-capsule look. Tag is the classic luggage/price-tag silhouette with a "
                "grommet hole."),
         picker("Label size", settings.tagSize, tagSizeLadder, ladderTitle,
                "Applies to every tag. Mission Control swaps to a fixed MC size so labels read in the "
                "thumbnails.")}};
}

ToggleRow showDuringWork(Settings& settings) {
    auto& mode = settings.visibilityMode;
    return {"Show tags during normal work",
            [&mode] { return mode.get() == TagVisibilityMode::AlwaysVisible; },
            [&mode](bool on) {
                mode.set(on ? TagVisibilityMode::AlwaysVisible : TagVisibilityMode::HiddenDuringWork);
            },
            "When off, tags hide during normal work — pop in only via the reveal triggers below."};
}

SettingsSection visibility(Settings& settings) {
    constexpr std::array kStyles = {MissionControlStyle::Pill, MissionControlStyle::Fullscreen,
                                    MissionControlStyle::HeaderBar};
    return {
        "Visibility",
        {showDuringWork(settings),
         toggle("Hide for screen-sharing", settings.killSwitchActive,
                "The emergency hide: overrides every other setting — every tag stays hidden until you turn "
                "this off. Toggle with ⌃⌥⌘H from anywhere; the menu bar shows an eye-slash while it's on."),
         toggle("Embiggen all tags", settings.embiggenAllTags,
                "Force every tag to the reveal size. Toggle with ⌃⌥⌘B. Auto-clears the next time Mission "
                "Control closes, since that's usually all you needed it for."),
         GroupTitle{"Reveal triggers"},
         toggle("Show on space swipe", settings.showRevealOnSwipe,
                "Every tag flashes briefly when you change spaces — a quarter-second glance at where you "
                "landed. For a longer look, hold the peek shortcut (⌃⌥⌘P): tags stay up while you hold it."),
         TextRow{"Tags always reveal when Mission Control opens. For guaranteed-big tags in MC thumbnails "
                 "(faster than native MC's snapshot timing), press ⌃⌥⌘↑ — rebindable in Shortcuts below."},
         picker(
             "Mission Control style", settings.missionControlStyle, kStyles, title,
             "How tags appear in MC thumbnails. **Pill** is the normal small tag at its anchored position. "
             "**Full** fills each thumbnail with the tag color + giant label. **Bar** paints a header strip "
             "across the top of the thumbnail.")}};
}

SettingsSection startup(Settings& settings) {
    return {"Startup",
            {ToggleRow{"Launch at login", [&settings] { return settings.launchAtLogin(); },
                       [&settings](bool on) { settings.setLaunchAtLogin(on); },
                       "Start orvellos automatically when you log in."}}};
}

WarningRow spaceShortcutsWarning(std::function<bool()> areEnabled) {
    return {"Space-switch shortcuts disabled",
            "Clicking a tag to jump Spaces uses ⌃← / ⌃→ under the hood. Turn these on in System Settings → "
            "Keyboard → Keyboard Shortcuts → Mission Control → Move left/right a space.",
            [areEnabled = std::move(areEnabled)] { return !areEnabled(); }};
}

SettingsSection about() {
    return {"About",
            {TextRow{applicationVersionText()},
             TextRow{"Tags re-bind to their original Spaces across app launches."},
             TextRow{"Pro build — durable Space binding enabled"}}};
}

}  // namespace

SettingsForm::SettingsForm(Services services)
    : services_(std::move(services)), permissionsState_(services_.permissions) {
    auto& settings = services_.settings;
    sections_ = {appearance(settings), visibility(settings), startup(settings),
                 shortcuts(),          permissions(),        about()};
    const auto notify = [this] { changed_.notify(); };
    changes_.push_back(settings.subscribe(notify));
    changes_.push_back(permissionsState_.subscribe(notify));
    permissionsState_.startRefreshing();
}

SettingsSection SettingsForm::shortcuts() {
    SettingsSection section{"Shortcuts", {spaceShortcutsWarning(services_.areSpaceShortcutsEnabled)}};
    for (const auto& [name, title] : hotkey::kTitles) {
        recorders_.push_back(std::make_unique<keyboard_shortcuts::Recorder>(services_.recorder, name));
        section.rows.push_back(ShortcutRow{std::string(title), recorders_.back().get()});
    }
    return section;
}

SettingsSection SettingsForm::permissions() {
    using enum PermissionRow::Permission;
    auto& permissions = services_.permissions.permissions;
    const auto row = [&](PermissionRow::Permission permission, std::string text, std::string hint) {
        return PermissionRow(permission, {std::move(text), "Request Access", std::move(hint)}, permissions,
                             permissionsState_);
    };
    return {
        "Permissions",
        {row(InputMonitoring,
             "Lets orvellos see the F3 keypress so it can pre-resize labels before Mission Control snapshots "
             "its thumbnails. Without it, labels still appear in MC — just at your chosen size instead of "
             "the "
             "extra-large reveal.",
             "If no prompt appears, Settings will open and Finder will reveal `orvello-pro.app`. In "
             "Settings, "
             "click **+**, then drag the revealed app into the list."),
         row(Accessibility,
             "Required for click-to-switch: jumping to a Space by clicking its tag (or a menu row) simulates "
             "⌃←/⌃→, which macOS only allows with Accessibility granted. Without it, tags are display-only.",
             ""),
         GroupTitle{"Stuck?"},
         TextRow{"Restart picks up freshly-granted permissions. Reset TCC also nukes orvellos' Privacy "
                 "entries — use this when Request Access has gone silent (usually a stale TCC entry with a "
                 "mismatched signature)."},
         ButtonsRow{{{"Restart", [&permissions] { permissions.relaunch(); }},
                     {"Reset TCC & Restart", [&permissions] { permissions.confirmReset(); }}}}}};
}

}  // namespace orvellos
