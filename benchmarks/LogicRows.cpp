#include <fmt/format.h>

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "benchmarks/PairedRuns.h"
#include "benchmarks/Row.h"
#include "orvellos/base/DebugLog.h"
#include "orvellos/overview/MissionControlObserver.h"
#include "orvellos/panels/QuickSwitcher.h"
#include "tests/support/SimulatedServices.h"

namespace benchmark {

namespace {

using orvellos::TagID;
using platform::simulated::SimulatedDesktop;

constexpr double kMostForAPoll = 1;            // microseconds
constexpr double kMostForThousandTags = 2000;  // microseconds
constexpr double kMostForALetter = 1000;       // microseconds

// The manager of that many tags on four Spaces of a desktop in memory. The log is the timeline alone: what
// the system's log takes for a line is the system's.
class Managed {
  public:
    explicit Managed(std::size_t tags) {
        orvellos::connectDebugLog({});
        desktop_.screens.addScreen({0, 0, 1440, 900});
        desktop_.spaces.addDisplay("Main", {"A", "B", "C", "D"});
        for (std::size_t i = 0; i < tags; ++i)
            store_.add({TagID::random(),
                        fmt::format("Tag {}", i),
                        "#3B82F6",
                        {},
                        std::string(1, static_cast<char>('A' + i % 4))});
        manager_.start();
        desktop_.runLoop.advance(std::chrono::seconds(3));
    }

    void reconcile() { manager_.reconcile(); }

  private:
    SimulatedDesktop desktop_;
    orvellos::Settings settings_{desktop_.defaults, desktop_.loginItem, std::nullopt};
    orvellos::EditingContext editing_;
    orvellos::SpaceIdentifier spaces_{desktop_.spaces, desktop_.spaces, desktop_.spaces, desktop_.screens};
    orvellos::TagStore store_{desktop_.files, desktop_.runLoop, "/data"};
    orvellos::TagManager manager_{orvellos::simulatedManagerServices(desktop_, settings_, editing_, spaces_),
                                  store_};
};

// The median time of one call, in microseconds.
double medianOf(int runs, const std::function<void()>& action) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        action();
        const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
        times.push_back(time.count());
    }
    return median(std::move(times));
}

void measurePoll(const Effort& effort, std::vector<Row>& rows) {
    SimulatedDesktop desktop;
    orvellos::MissionControlObserver observer(desktop.runLoop, desktop.overview, desktop.defaults);
    observer.start();
    constexpr int kPolls = 60;
    const double second =
        medianOf(effort.pairs, [&] { desktop.runLoop.advance(kPolls * observer.kBurstInterval); });
    const double poll = second / kPolls;
    rows.push_back(
        {"a poll that finds nothing new", fmt::format("{:.2f} µs", poll), "< 1 µs", poll < kMostForAPoll});
}

void measureReconcile(const Effort& effort, std::vector<Row>& rows) {
    for (const std::size_t tags : {10U, 100U, 1000U}) {
        Managed managed(tags);
        const double time = medianOf(effort.pairs, [&] { managed.reconcile(); });
        const double goal = kMostForThousandTags * static_cast<double>(tags) / 1000;
        rows.push_back({fmt::format("reconcile, {} tags, nothing to change", tags),
                        fmt::format("{:.0f} µs", time), fmt::format("< {:.0f} µs", goal), time < goal});
    }
}

void measureQuickSwitcher(const Effort& effort, std::vector<Row>& rows) {
    constexpr std::size_t kSpaces = 1000;
    std::vector<orvellos::MenuSpaceRow> spaces;
    for (std::size_t i = 1; i <= kSpaces; ++i) {
        const auto uuid = fmt::format("S{}", i);
        spaces.push_back(
            {uuid, i, orvellos::Tag{TagID::random(), fmt::format("Tag {}", i), "#3B82F6", {}, uuid}, false});
    }
    struct Owner final : orvellos::QuickSwitcher::Owner {
        void navigate(const orvellos::MenuSpaceRow& /*row*/) override {}
        void onClose() override {}
    } owner;
    orvellos::QuickSwitcher switcher(std::move(spaces), owner);
    const double time = medianOf(effort.pairs, [&] { switcher.setQuery("Tag"); });
    if (switcher.filteredRows().size() != kSpaces) throw std::runtime_error("not every Space is found");
    rows.push_back({"a letter typed into the quick switcher, 1,000 Spaces", fmt::format("{:.0f} µs", time),
                    "< 1000 µs", time < kMostForALetter});
}

}  // namespace

std::vector<Row> measureLogic(const Effort& effort) {
    std::vector<Row> rows;
    measurePoll(effort, rows);
    measureReconcile(effort, rows);
    measureQuickSwitcher(effort, rows);
    return rows;
}

}  // namespace benchmark
