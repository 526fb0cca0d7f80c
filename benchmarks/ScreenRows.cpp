#include <X11/keysym.h>
#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <stdexcept>
#include <thread>

#include "benchmarks/PairedRuns.h"
#include "benchmarks/Row.h"
#include "benchmarks/TaggedSpaces.h"
#include "tests/support/Picture.h"
#include "tests/support/PlainWindow.h"
#include "tests/support/PrivateDesktop.h"

namespace benchmark {

namespace {

using desktop_test::Picture;
using desktop_test::PlainWindow;
using desktop_test::PrivateDesktop;
using desktop_test::Process;
using desktop_test::Rectangle;
using desktop_test::Rgb;
using desktop_test::WindowManager;
using Clock = std::chrono::steady_clock;

constexpr Rgb kTagColor = 0x3B82F6;
constexpr Rgb kPlainColor = 0xEF4444;
constexpr int kTolerance = 24;  // of a tag's highlight
// The Spaces of the tag, of the plain window, and one with neither.
constexpr std::uint32_t kTagged = 1;
constexpr std::uint32_t kPlain = 2;
constexpr std::uint32_t kEmpty = 3;
constexpr Rectangle kPlainFrame{900, 10, 210, 100};

struct Spot {
    int x = 0;
    int y = 0;
    Rgb color = 0;
};

bool shows(PrivateDesktop& desktop, const Spot& spot) {
    const auto pixel = takePicture(desktop.x(), {spot.x, spot.y, 1, 1});
    return desktop_test::isNear(pixel.at(0, 0), spot.color, kTolerance);
}

// Waits with as little work for the server and the processor as a fine measurement allows.
void await(const std::string& what, const std::function<bool()>& condition) {
    const auto start = Clock::now();
    while (!condition()) {
        if (Clock::now() - start > desktop_test::kGenerousDeadline)
            throw std::runtime_error(fmt::format("{}: not seen", what));
        std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
}

// The middle of the topmost place where the screen shows a square of that colour.
std::optional<Spot> find(const Picture& picture, Rgb color) {
    constexpr int kSide = 5;
    for (int y = 0; y + kSide < picture.height(); ++y)
        for (int x = 0; x + kSide < picture.width(); ++x)
            if (desktop_test::isNear(picture.at(x, y), color, kTolerance) &&
                picture.count({x, y, kSide, kSide}, color, kTolerance) == kSide * kSide)
                return Spot{x + kSide / 2, y + kSide / 2, color};
    return std::nullopt;
}

Spot findSpot(PrivateDesktop& desktop, Rgb color) {
    std::optional<Spot> spot;
    await(fmt::format("the colour {:06x}", color),
          [&] { return (spot = find(takePicture(desktop.x()), color)).has_value(); });
    return *spot;
}

void goTo(PrivateDesktop& desktop, std::uint32_t space) {
    if (!desktop.goToDesktop(space)) throw std::runtime_error("the desktop does not change");
}

// From the request to the window manager until the screen shows it, beginning on the empty Space each time.
Timed untilShown(PrivateDesktop& desktop, std::uint32_t space, const Spot& spot) {
    return [&desktop, space, spot] {
        goTo(desktop, kEmpty);
        await("an empty Space", [&] { return !shows(desktop, spot); });
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        const auto start = Clock::now();
        desktop.x().switchToDesktop(space);
        await("the Space", [&] { return shows(desktop, spot); });
        return Milliseconds(Clock::now() - start);
    };
}

void measureSwitch(const Effort& effort, WindowManager kind, std::vector<Row>& rows) {
    const bool composited = kind == WindowManager::Kwin;
    PrivateDesktop desktop({.windowManager = {.kind = kind, .composited = composited}});
    tagSpace(desktop, kTagged);
    const PlainWindow plain(desktop.display(),
                            {.frame = kPlainFrame, .color = kPlainColor, .desktop = kPlain});
    const auto application = desktop.start({PrivateDesktop::program("orvello")});
    goTo(desktop, kTagged);
    const auto tagSpot = findSpot(desktop, kTagColor);
    goTo(desktop, kPlain);
    const auto plainSpot = findSpot(desktop, kPlainColor);
    rows.push_back(rowOf(fmt::format("Space switch to its label / to a plain window, {}", nameOf(kind)),
                         compare(std::max(effort.pairs / 2, 1), untilShown(desktop, kTagged, tagSpot),
                                 untilShown(desktop, kPlain, plainSpot)),
                         1.1));
}

// From the window manager's notification to the label, in the mode that hides it while the user works.
void measureGlance(const Effort& effort, std::vector<Row>& rows) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    tagSpace(desktop, kTagged);
    hideDuringWork(desktop);
    const auto application = desktop.start({PrivateDesktop::program("orvello")});
    auto& x = desktop.x();
    awaitClients(desktop, 1);
    goTo(desktop, kTagged);
    const auto spot = findSpot(desktop, kTagColor);
    await("the end of the glance", [&] { return !shows(desktop, spot); });
    std::vector<double> times;
    for (int i = 0; i < std::max(effort.pairs / 4, 1); ++i) {
        goTo(desktop, kEmpty);
        std::this_thread::sleep_for(std::chrono::seconds(1));  // the glance ends
        x.switchToDesktop(kTagged);
        await("the notification", [&] { return x.currentDesktop() == kTagged; });
        const auto start = Clock::now();
        await("the label", [&] { return shows(desktop, spot); });
        times.push_back(Milliseconds(Clock::now() - start).count());
    }
    const double time = median(times);
    rows.push_back(
        {"hidden mode: notification to the label", fmt::format("{:.2f} ms", time), "< 5 ms", time < 5});
}

// Opens KWin's overview each time, and closes it again.
class OverviewOpenings {
  public:
    explicit OverviewOpenings(PrivateDesktop& desktop)
        : desktop_(desktop),
          plain_(desktop.display(), {.frame = {0, 100, 1280, 700}, .color = kPlainColor, .desktop = kPlain}),
          application_(desktop.start({PrivateDesktop::program("orvello")})) {
        awaitClients(desktop, 3);
        goTo(desktop, kEmpty);
        std::this_thread::sleep_for(std::chrono::seconds(3));
        callOverview();
        tagSpot_ = findSpot(desktop, kTagColor);
        plainSpot_ = findSpot(desktop, kPlainColor);
        callOverview();
        awaitClosed();
        makeShortcutWork();
    }

    // From the request until the screen shows the big tag, and the thumbnail of the plain window.
    std::pair<Milliseconds, Milliseconds> open(bool withPreTrigger) {
        std::optional<Milliseconds> tag;
        std::optional<Milliseconds> plain;
        const auto start = Clock::now();
        withPreTrigger ? pressShortcut() : callOverview();
        await("the big tag", [&] {
            if (!tag && shows(desktop_, tagSpot_)) tag = Clock::now() - start;
            if (!plain && shows(desktop_, plainSpot_)) plain = Clock::now() - start;
            return tag && plain;
        });
        callOverview();
        awaitClosed();
        return {*tag, *plain};
    }

  private:
    // KWin may miss its shortcut the first time.
    void makeShortcutWork() {
        const auto isOpen = [this] { return shows(desktop_, plainSpot_); };
        if (!desktop_test::waitUntil([&] {
                pressShortcut();
                return desktop_test::waitUntil(isOpen, std::chrono::seconds(3));
            }))
            throw std::runtime_error("KWin's shortcut opens no overview");
        callOverview();
        awaitClosed();
    }
    // Meta+W.
    void pressShortcut() {
        auto keys = desktop_.devices();
        keys.typeKeys({keys.keyFor(XK_Super_L), keys.keyFor('w')});
    }
    void callOverview() {
        if (!desktop_.toggleOverview("Overview")) throw std::runtime_error("KWin does not open its overview");
    }
    void awaitClosed() {
        await("the end of the overview",
              [&] { return !shows(desktop_, tagSpot_) && !shows(desktop_, plainSpot_); });
        std::this_thread::sleep_for(kSettlingTime);  // the tags are small again
    }

    PrivateDesktop& desktop_;
    PlainWindow plain_;
    Process application_;
    Spot tagSpot_;
    Spot plainSpot_;
};

void measureOverview(const Effort& effort, std::vector<Row>& rows) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Kwin, .composited = true}});
    tagSpace(desktop, kTagged);
    OverviewOpenings openings(desktop);
    for (const bool withPreTrigger : {true, false}) {
        std::vector<double> tags;
        std::vector<double> plains;
        std::vector<double> ratios;
        for (int i = 0; i < std::max(effort.pairs / 8, 1); ++i) {
            const auto [tag, plain] = openings.open(withPreTrigger);
            tags.push_back(tag.count());
            plains.push_back(plain.count());
            ratios.push_back(tag / plain);
        }
        rows.push_back(rowOf(
            fmt::format("overview to its big tag / a plain window in it, {}",
                        withPreTrigger ? "by key" : "unforeseen"),
            Comparison{Milliseconds(median(tags)), Milliseconds(median(plains)), median(ratios)}, 1.05));
    }
}

}  // namespace

std::vector<Row> measureScreen(const Effort& effort) {
    std::vector<Row> rows;
    for (const auto kind : {WindowManager::Openbox, WindowManager::Xfwm4, WindowManager::Kwin})
        measureSwitch(effort, kind, rows);
    measureGlance(effort, rows);
    measureOverview(effort, rows);
    return rows;
}

}  // namespace benchmark
