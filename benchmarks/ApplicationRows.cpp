#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <thread>

#include "benchmarks/DesktopChange.h"
#include "benchmarks/PairedRuns.h"
#include "benchmarks/Row.h"
#include "benchmarks/RunningProcess.h"
#include "benchmarks/TaggedSpaces.h"
#include "tests/support/PrivateDesktop.h"

namespace benchmark {

namespace {

using desktop_test::PrivateDesktop;
using desktop_test::WindowManager;

constexpr std::size_t kManyTags = 60;

double residentWith(PrivateDesktop& desktop, std::size_t tags) {
    tagSpaces(desktop, tags);
    const auto application = desktop.start({PrivateDesktop::program("orvello")});
    awaitClients(desktop, tags);
    std::this_thread::sleep_for(kSettlingTime);
    return residentMiB(application.pid());
}

void measureMemory(PrivateDesktop& desktop, std::vector<Row>& rows) {
    const double ten = residentWith(desktop, kUsualTags);
    awaitNoClients(desktop);
    const double each =
        (residentWith(desktop, kManyTags) - ten) / static_cast<double>(kManyTags - kUsualTags);
    rows.push_back({"resident memory, ten tags", fmt::format("{:.1f} MiB", ten), "<= 32 MiB", ten <= 32});
    rows.push_back(
        {"resident memory, each further tag", fmt::format("{:.2f} MiB", each), "<= 0.02 MiB", each <= 0.02});
}

void pointAtTheTag(PrivateDesktop& desktop) {
    auto& x = desktop.x();
    for (const auto client : x.clients()) {
        const auto place = x.geometry(client);
        if (!place || place->width <= 1 || x.mapState(client) != desktop_test::MapState::Viewable) continue;
        desktop.devices().movePointer(place->x + place->width / 2, place->y + place->height / 2);
        return;
    }
    throw std::runtime_error("no tag can be seen");
}

// Processor time and wake-ups of the application while nobody asks anything of it.
struct Idling {
    std::string mode;
    double mostPercent;
    bool pointsAtTag = false;
};
void measureIdling(PrivateDesktop& desktop, const Idling& idling, const Effort& effort,
                   std::vector<Row>& rows) {
    const auto application = desktop.start({PrivateDesktop::program("orvello")});
    awaitClients(desktop, kUsualTags);
    if (idling.pointsAtTag) pointAtTheTag(desktop);
    std::this_thread::sleep_for(kSettlingTime);
    const auto pid = application.pid();
    const auto wakeUps = [&] { return statusNumber(pid, "voluntary_ctxt_switches:"); };
    const std::chrono::duration<double> time = std::chrono::milliseconds(200) * effort.pairs;
    const auto usedBefore = processorTime(pid);
    const double wokenBefore = wakeUps();
    std::this_thread::sleep_for(time);
    const double share = std::chrono::duration<double>(processorTime(pid) - usedBefore) / time;
    const double wokenEachSecond = (wakeUps() - wokenBefore) / time.count();
    rows.push_back({fmt::format("processor time while idle, ten tags, {}", idling.mode),
                    fmt::format("{:.3f} % of a core", 100 * share),
                    fmt::format("<= {:.2f} %", idling.mostPercent), 100 * share <= idling.mostPercent});
    rows.push_back({fmt::format("wake-ups a second while idle, {}", idling.mode),
                    fmt::format("{:.1f}", wokenEachSecond), "<= 12", wokenEachSecond <= 12});
}

// The idle application's questions to the display server, and to the message bus, where KWin does not tell of
// its overview by itself.
void measureRequests(const Effort& effort, std::vector<Row>& rows) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Kwin}});
    tagSpaces(desktop, kUsualTags);
    const auto application = desktop.start({PrivateDesktop::program("orvello")});
    awaitClients(desktop, 2 * kUsualTags);
    std::this_thread::sleep_for(kSettlingTime);
    const auto time = std::chrono::milliseconds(200) * effort.pairs;
    CallCounter calls(desktop, application.pid(), "writev,sendmsg");
    std::this_thread::sleep_for(time);
    calls.stop();
    if (calls.count("sendmsg") == 0) throw std::runtime_error("the application asks nothing");
    const double seconds = std::chrono::duration<double>(time).count();
    const auto add = [&](const std::string& what, double each, double most) {
        rows.push_back(
            {what, fmt::format("{:.1f} a second", each), fmt::format("<= {:.1f}", most), each <= most});
    };
    add("questions to the display server while idle, KWin", calls.count("writev") / seconds, 1);
    add("questions to the bus while idle, none waited for, KWin", calls.count("sendmsg") / seconds, 2);
}

// From the start of the command until the window manager lists that many windows.
Timed untilWindows(PrivateDesktop& desktop, std::vector<std::string> words, std::size_t windows) {
    return [&desktop, words = std::move(words), windows] {
        const auto start = std::chrono::steady_clock::now();
        auto process = desktop.start(words);
        awaitRoot(desktop, "the window of " + words.front(),
                  [&] { return desktop.x().clients().size() >= windows; });
        const auto end = std::chrono::steady_clock::now();
        process.stop();
        awaitNoClients(desktop);
        return Milliseconds(end - start);
    };
}

}  // namespace

std::vector<Row> measureStart(const Effort& effort) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    tagSpaces(desktop, 1);
    return {rowOf(
        "start to the first label / a bare Qt Widgets window",
        compare(std::max(effort.pairs / 2, 1), untilWindows(desktop, {PrivateDesktop::program("orvello")}, 1),
                untilWindows(desktop, {BARE_QT_WINDOW}, 1)),
        1.4)};
}

std::vector<Row> measureApplication(const Effort& effort) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    std::vector<Row> rows;
    measureMemory(desktop, rows);
    awaitNoClients(desktop);
    tagSpaces(desktop, kUsualTags);
    measureIdling(desktop, {"always visible", 0.12}, effort, rows);
    awaitNoClients(desktop);
    measureIdling(desktop, {"the pointer on a tag", 0.12, true}, effort, rows);
    awaitNoClients(desktop);
    hideDuringWork(desktop);
    measureIdling(desktop, {"hidden during work", 0.10}, effort, rows);
    measureRequests(effort, rows);
    return rows;
}

}  // namespace benchmark
