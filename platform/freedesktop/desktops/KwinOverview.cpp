#include "platform/freedesktop/desktops/KwinOverview.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace platform::freedesktop {

namespace {

constexpr const char* kService = "org.kde.KWin";
constexpr Duration kQuietPause = std::chrono::seconds(1);
constexpr Duration kBusyPause = std::chrono::milliseconds(50);
constexpr Duration kHintAttention = std::chrono::milliseconds(250);
constexpr Duration kShortcutAttention = std::chrono::milliseconds(1500);

OverviewKind kindOf(const nlohmann::json& effects) {
    const auto has = [&](std::string_view effect) { return std::ranges::count(effects, effect) > 0; };
    if (has("desktopgrid")) return OverviewKind::DesktopGrid;
    return has("overview") || has("cube") ? OverviewKind::Windows : OverviewKind::None;
}

}  // namespace

KwinOverview::KwinOverview(MessageBus& bus, RunLoop& runLoop)
    : bus_(bus),
      runLoop_(runLoop),
      service_(bus, kService, [this](bool isRunning) { handleServiceChanged(isRunning); }) {}

std::optional<BusCall> KwinOverview::openingCall() const {
    if (!hasEffects_) return std::nullopt;
    return BusCall{.service = "org.kde.kglobalaccel",
                   .path = "/component/kwin",
                   .interface = "org.kde.kglobalaccel.Component",
                   .member = "invokeShortcut",
                   .arguments = {std::string("Overview")}};
}

void KwinOverview::overviewMayHaveChanged() {
    hurry(kHintAttention);
}

void KwinOverview::expectChange() {
    hurry(kShortcutAttention);
}

void KwinOverview::hurry(Duration duration) {
    hurryEnds_ = std::max(hurryEnds_, runLoop_.now() + duration);
    if (service_.isRunning()) ask();
}

void KwinOverview::ask() {
    if (std::exchange(isAsking_, true)) {
        asksAgain_ = true;
        return;
    }
    next_.cancel();
    question_ = bus_.call(propertyRead(kService, "/Effects", "org.kde.kwin.Effects", "activeEffects"),
                          [this](const auto& answer) { handleAnswer(answer); });
}

// A KWin that is busy drawing may miss one answer, which changes nothing. Without compositing it has no
// effects and answers with an error.
void KwinOverview::handleAnswer(const std::optional<BusArguments>& answer) {
    isAsking_ = false;
    const bool isList = answer && answer->size() == 1 && answer->front().is_array();
    if (isList || std::exchange(hasFailed_, true)) {
        hasEffects_ = isList;
        hasFailed_ = !isList;
        setKind(isList ? kindOf(answer->front()) : OverviewKind::None);
    }
    if (std::exchange(asksAgain_, false))
        ask();
    else
        next_ = runLoop_.after(pause(), [this] { ask(); });
}

void KwinOverview::handleServiceChanged(bool isRunning) {
    question_.cancel();
    next_.cancel();
    hasEffects_ = isAsking_ = asksAgain_ = hasFailed_ = false;
    setKind(OverviewKind::None);
    tellOverviewChanged();
    if (isRunning) ask();
}

Subscription KwinOverview::followKind(const std::function<void(OverviewKind)>& action) {
    action(kind_);
    return kindChanged_.subscribe(action);
}

void KwinOverview::setKind(OverviewKind kind) {
    if (std::exchange(kind_, kind) == kind) return;
    kindChanged_.notify(kind);
    tellOverviewChanged();
}

Duration KwinOverview::pause() const {
    return isOverviewOpen() || runLoop_.now() < hurryEnds_ ? kBusyPause : kQuietPause;
}

}  // namespace platform::freedesktop
