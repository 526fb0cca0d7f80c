#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <thread>

#include "benchmarks/PairedRuns.h"
#include "benchmarks/Row.h"
#include "tests/support/PrivateDesktop.h"

namespace benchmark {

namespace {

using desktop_test::PrivateDesktop;
using desktop_test::WindowManager;

constexpr std::size_t kTags = 10;
constexpr std::size_t kManyTags = 60;
constexpr auto kSettles = std::chrono::seconds(3);
constexpr double kMiB = 1024;  // in KiB

// Tags the first Space `count` times over, which costs as much as tagging many Spaces.
void writeTags(const PrivateDesktop& desktop, std::size_t count) {
    const auto dump = desktop.run({PrivateDesktop::program("orvello"), "dump"});
    const auto spaces = nlohmann::json::parse(dump.standardOutput);
    auto tags = nlohmann::json::array();
    for (std::size_t i = 0; i < count; ++i)
        tags.push_back({{"id", fmt::format("{:08}-1111-4111-8111-111111111111", i)},
                        {"label", fmt::format("Tag {}", i)},
                        {"colorHex", "#3B82F6"},
                        {"spaceUUID", spaces.at(i % spaces.size()).at("uuid")}});
    const auto folder = desktop.dataFolder() / "orvello";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "tags.json") << tags;
}

void awaitClients(PrivateDesktop& desktop, std::size_t count) {
    if (!desktop_test::waitUntil([&] { return desktop.x().clients().size() >= count; }))
        throw std::runtime_error("the tag windows do not come up");
}

// A number from a line of /proc/<pid>/status.
double statusNumber(pid_t process, std::string_view name) {
    std::ifstream status(fmt::format("/proc/{}/status", process));
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name)) return std::stod(line.substr(name.size() + 1));
    throw std::runtime_error("the application has ended");
}

// The processor time that the process has used.
std::chrono::nanoseconds processorTime(pid_t process) {
    std::ifstream statistics(fmt::format("/proc/{}/schedstat", process));
    long long nanoseconds = 0;
    statistics >> nanoseconds;
    return std::chrono::nanoseconds(nanoseconds);
}

double residentMiB(PrivateDesktop& desktop, std::size_t tags) {
    writeTags(desktop, tags);
    const auto application = desktop.start({PrivateDesktop::program("orvello")});
    awaitClients(desktop, 2 * tags);
    std::this_thread::sleep_for(kSettles);
    return statusNumber(application.pid(), "VmRSS:") / kMiB;
}

void measureMemory(PrivateDesktop& desktop, std::vector<Row>& rows) {
    const double ten = residentMiB(desktop, kTags);
    if (!desktop_test::waitUntil([&] { return desktop.x().clients().empty(); }))
        throw std::runtime_error("the tag windows do not go away");
    const double each = (residentMiB(desktop, kManyTags) - ten) / static_cast<double>(kManyTags - kTags);
    rows.push_back({"resident memory, ten tags", fmt::format("{:.1f} MiB", ten), "< 60 MiB", ten < 60});
    rows.push_back(
        {"resident memory, each further tag", fmt::format("{:.2f} MiB", each), "< 1 MiB", each < 1});
}

void measureIdling(PrivateDesktop& desktop, const Effort& effort, std::vector<Row>& rows) {
    writeTags(desktop, kTags);
    const auto application = desktop.start({PrivateDesktop::program("orvello")});
    awaitClients(desktop, 2 * kTags);
    std::this_thread::sleep_for(kSettles);
    const auto pid = application.pid();
    const auto wakeUps = [&] { return statusNumber(pid, "voluntary_ctxt_switches:"); };
    const std::chrono::duration<double> time = std::chrono::milliseconds(200) * effort.pairs;
    const auto usedBefore = processorTime(pid);
    const double wokenBefore = wakeUps();
    std::this_thread::sleep_for(time);
    const double share = std::chrono::duration<double>(processorTime(pid) - usedBefore) / time;
    const double wokenEachSecond = (wakeUps() - wokenBefore) / time.count();
    rows.push_back({"processor time of the idle application, ten tags",
                    fmt::format("{:.3f} % of a core", 100 * share), "< 0.3 %", share < 0.003});
    // It looks for the overview 10 times a second and asks for the pointer 5 times, for whose answer it wakes
    // too.
    rows.push_back(
        {"wake-ups a second", fmt::format("{:.1f}", wokenEachSecond), "<= 20", wokenEachSecond <= 20});
}

// From the start of the command until the window manager lists that many windows.
Timed untilWindows(PrivateDesktop& desktop, std::vector<std::string> words, std::size_t windows) {
    return [&desktop, words = std::move(words), windows] {
        auto& x = desktop.x();
        const auto start = std::chrono::steady_clock::now();
        auto process = desktop.start(words);
        while (x.clients().size() < windows) {
            if (std::chrono::steady_clock::now() - start > std::chrono::seconds(30))
                throw std::runtime_error(words.front() + " shows no window");
        }
        const auto end = std::chrono::steady_clock::now();
        process.stop();
        if (!desktop_test::waitUntil([&] { return x.clients().empty(); }))
            throw std::runtime_error("the windows do not go away");
        return Milliseconds(end - start);
    };
}

}  // namespace

std::vector<Row> measureApplication(const Effort& effort) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    std::vector<Row> rows;
    writeTags(desktop, 1);
    rows.push_back(rowOf(
        "start to the first label / a bare Qt Widgets window",
        compare(std::max(effort.pairs / 5, 1), untilWindows(desktop, {PrivateDesktop::program("orvello")}, 1),
                untilWindows(desktop, {BARE_QT_WINDOW}, 1)),
        1.5));
    measureMemory(desktop, rows);
    if (!desktop_test::waitUntil([&] { return desktop.x().clients().empty(); }))
        throw std::runtime_error("the tag windows do not go away");
    measureIdling(desktop, effort, rows);
    return rows;
}

}  // namespace benchmark
