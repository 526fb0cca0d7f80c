#pragma once

#include <functional>

#include "platform/Observers.h"
#include "platform/RunLoop.h"
#include "platform/freedesktop/bus/BusService.h"
#include "platform/freedesktop/bus/MessageBus.h"
#include "platform/freedesktop/desktops/DesktopOverview.h"

namespace platform::freedesktop {

// KWin's overview, desktop grid or cube. KWin says which effects are active but not when that changes, so it
// is asked: at once when there is reason to, often while one is open, and else about once a second.
class KwinOverview final : public BusOverview {
  public:
    KwinOverview(MessageBus& bus, RunLoop& runLoop);

    [[nodiscard]] bool mayOpen() const override { return service_.isRunning(); }
    [[nodiscard]] bool isOverviewOpen() const override { return kind_ != OverviewKind::None; }
    [[nodiscard]] std::string name() const override { return "KWin"; }
    [[nodiscard]] std::optional<BusCall> openingCall() const override;

    // Tells at once and on every change which kind is open.
    Subscription followKind(const std::function<void(OverviewKind kind)>& action);

    // The display server has shown something that goes with an overview's opening or closing.
    void overviewMayHaveChanged();
    // The user is about to open or close one: asks often for a while.
    void expectChange();

  private:
    void hurry(Duration duration);
    void ask();
    void handleAnswer(const std::optional<BusArguments>& answer);
    void handleServiceChanged(bool isRunning);
    void setKind(OverviewKind kind);
    [[nodiscard]] Duration pause() const;

    MessageBus& bus_;
    RunLoop& runLoop_;
    OverviewKind kind_ = OverviewKind::None;
    Observers<OverviewKind> kindChanged_;
    bool hasEffects_ = false;
    bool isAsking_ = false;
    bool asksAgain_ = false;  // what has been asked may be answered from before the latest hint
    bool hasFailed_ = false;  // the last question had no answer
    Instant hurryEnds_{};
    Subscription question_;
    Timer next_;
    BusServiceWatch service_;
};

}  // namespace platform::freedesktop
