#include "platform/freedesktop/KwinOverview.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace platform::freedesktop {

namespace {

constexpr const char* kService = "org.kde.KWin";
constexpr Duration kQuietPause = std::chrono::seconds(1);
constexpr Duration kBusyPause = std::chrono::milliseconds(50);
constexpr Duration kAfterHint = std::chrono::milliseconds(250);
constexpr Duration kExpectation = std::chrono::milliseconds(1500);

constexpr std::string_view kDesktopGrid = "desktopgrid";

bool isOverview(const nlohmann::json& effect) {
    static constexpr std::array<std::string_view, 3> kOverviews = {"overview", kDesktopGrid, "cube"};
    return effect.is_string() &&
           std::ranges::find(kOverviews, effect.get_ref<const std::string&>()) != kOverviews.end();
}

}  // namespace

KwinOverview::KwinOverview(SessionBus& bus, RunLoop& runLoop)
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
    hurry(kAfterHint);
}

void KwinOverview::expectChange() {
    hurry(kExpectation);
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
        isOpen_ = isList && std::ranges::any_of(answer->front(), isOverview);
        hasEffects_ = isList;
        hasFailed_ = !isList;
        setDesktopGridOpen(isList && std::ranges::count(answer->front(), kDesktopGrid) > 0);
    }
    if (std::exchange(asksAgain_, false))
        ask();
    else
        next_ = runLoop_.after(pause(), [this] { ask(); });
}

void KwinOverview::handleServiceChanged(bool isRunning) {
    question_.cancel();
    next_.cancel();
    isOpen_ = hasEffects_ = isAsking_ = asksAgain_ = hasFailed_ = false;
    setDesktopGridOpen(false);
    if (isRunning) ask();
}

Subscription KwinOverview::followDesktopGrid(const std::function<void(bool)>& action) {
    action(isDesktopGridOpen_);
    return desktopGridChanged_.subscribe(action);
}

void KwinOverview::setDesktopGridOpen(bool isOpen) {
    if (std::exchange(isDesktopGridOpen_, isOpen) != isOpen) desktopGridChanged_.notify(isOpen);
}

Duration KwinOverview::pause() const {
    return isOpen_ || runLoop_.now() < hurryEnds_ ? kBusyPause : kQuietPause;
}

}  // namespace platform::freedesktop
