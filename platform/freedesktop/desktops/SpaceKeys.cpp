#include "platform/freedesktop/desktops/SpaceKeys.h"

#include <algorithm>
#include <utility>

#include "platform/freedesktop/desktops/CurrentDesktop.h"

namespace platform::freedesktop {

namespace {

// KWin has the keys of its effects once it has loaded them, which it does not announce.
constexpr auto kEffectLoadingTime = std::chrono::seconds(10);
// A shortcut that is given other keys is taken off the old ones first.
constexpr auto kSettlingTime = std::chrono::milliseconds(200);

// Up, or back, is to the left, down and forth to the right: the application knows no rows of Spaces.
constexpr KeyEvent kLeft{key::kLeftArrow, modifier::kControl};
constexpr KeyEvent kRight{key::kRightArrow, modifier::kControl};
constexpr KeyEvent kOverview{key::kMissionControl, 0};

constexpr std::pair<std::string_view, KeyEvent> kActions[] = {
    // KWin
    {"Switch One Desktop to the Left", kLeft},
    {"Switch One Desktop to the Right", kRight},
    {"Switch One Desktop Up", kLeft},
    {"Switch One Desktop Down", kRight},
    {"Switch to Previous Desktop", kLeft},
    {"Switch to Next Desktop", kRight},
    {"Overview", kOverview},
    {"ShowDesktopGrid", kOverview},
    {"Grid View", kOverview},
    {"Cube", kOverview},
    // xfwm4
    {"left_workspace_key", kLeft},
    {"right_workspace_key", kRight},
    {"up_workspace_key", kLeft},
    {"down_workspace_key", kRight},
    {"prev_workspace_key", kLeft},
    {"next_workspace_key", kRight},
    // GNOME, Cinnamon and MATE
    {"switch-to-workspace-left", kLeft},
    {"switch-to-workspace-right", kRight},
    {"switch-to-workspace-up", kLeft},
    {"switch-to-workspace-down", kRight},
    {"switch-to-workspace-prev", kLeft},
    {"switch-to-workspace-last", kRight},
    {"toggle-overview", kOverview},
    {"toggle-application-view", kOverview},
    {"overlay-key", kOverview},
};

// The names of the actions that go to one Space, around its number.
constexpr std::pair<std::string_view, std::string_view> kNumbered[] = {
    {"Switch to Desktop ", ""}, {"workspace_", "_key"}, {"switch-to-workspace-", ""}};

bool goesToNumber(std::string_view name) {
    return std::ranges::any_of(kNumbered, [&](const auto& around) {
        const auto& [before, after] = around;
        if (name.size() <= before.size() + after.size()) return false;
        const auto number = name.substr(before.size(), name.size() - before.size() - after.size());
        return name.starts_with(before) && name.ends_with(after) &&
               number.find_first_not_of("0123456789") == std::string_view::npos;
    });
}

// Cinnamon gives these names to its two overviews.
bool isOverviewOfCinnamon(std::string_view name, std::string_view desktops) {
    return isAmongDesktops("X-Cinnamon", desktops) &&
           (name == "switch-to-workspace-up" || name == "switch-to-workspace-down");
}

}  // namespace

std::optional<KeyEvent> meaningOfAction(std::string_view name, std::string_view desktops) {
    if (isOverviewOfCinnamon(name, desktops)) return kOverview;
    if (goesToNumber(name)) return kRight;
    const auto* found = std::ranges::find(kActions, name, &std::pair<std::string_view, KeyEvent>::first);
    return found == std::end(kActions) ? std::nullopt : std::optional(found->second);
}

SpaceKeys::SpaceKeys(MessageBus& bus, RunLoop& runLoop, DesktopAccelerators& accelerators,
                     std::function<void(const std::vector<SpaceKey>&)> changed)
    : runLoop_(runLoop),
      accelerators_(accelerators),
      changed_(std::move(changed)),
      kwinShortcuts_(bus),
      kwinsChange_(kwinShortcuts_.onChange([this] { readSoon(); })),
      acceleratorsChange_(accelerators_.onChange([this] { readSoon(); })),
      kwinRuns_(bus, "org.kde.KWin", [this](bool isRunning) { followKwin(isRunning); }) {}

void SpaceKeys::followKwin(bool isRunning) {
    effectsLoaded_.cancel();
    setKwins({});
    if (!isRunning) return;
    kwinMayHaveOthers();
    effectsLoaded_ = runLoop_.after(kEffectLoadingTime, [this] { kwinMayHaveOthers(); });
}

void SpaceKeys::kwinMayHaveOthers() {
    if (!kwinRuns_.isRunning()) return;
    kwinShortcuts_.request([this](const auto& shortcuts) {
        if (kwinRuns_.isRunning()) setKwins(shortcuts);
    });
}

void SpaceKeys::readSoon() {
    settled_ = runLoop_.after(kSettlingTime, [this] { read(); });
}

void SpaceKeys::read() {
    kwinMayHaveOthers();
    reading_ = accelerators_.read(kLongestPatientCall,
                                  [this](const auto& accelerators) { setAccelerators(accelerators); });
}

void SpaceKeys::setKwins(const std::vector<KwinShortcut>& shortcuts) {
    kwins_.clear();
    for (const auto& [action, qtKey] : shortcuts)
        if (const auto meaning = meaningOfAction(action, {}))
            kwins_.push_back({.qtKey = qtKey, .accelerator = {}, .meaning = *meaning});
    tell();
}

void SpaceKeys::setAccelerators(const std::vector<Accelerator>& accelerators) {
    others_.clear();
    for (const auto& accelerator : accelerators)
        if (const auto meaning = meaningOfAction(accelerator.name, accelerators_.desktops()))
            others_.push_back({.qtKey = 0, .accelerator = accelerator.keys, .meaning = *meaning});
    tell();
}

void SpaceKeys::tell() const {
    auto keys = kwins_;
    keys.insert(keys.end(), others_.begin(), others_.end());
    changed_(keys);
}

}  // namespace platform::freedesktop
