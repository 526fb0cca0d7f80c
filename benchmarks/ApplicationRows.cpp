#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <stdexcept>
#include <thread>

#include "benchmarks/PairedRuns.h"
#include "benchmarks/Row.h"
#include "benchmarks/TaggedSpaces.h"
#include "tests/support/PrivateDesktop.h"

namespace benchmark {

namespace {

using desktop_test::PrivateDesktop;
using desktop_test::WindowManager;

constexpr std::size_t kTags = 10;
constexpr std::size_t kManyTags = 60;
constexpr auto kSettles = std::chrono::seconds(3);
constexpr double kMiB = 1024;  // in KiB

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
    tagSpaces(desktop, tags);
    const auto application = desktop.start({PrivateDesktop::program("orvello")});
    awaitClients(desktop, 2 * tags);
    std::this_thread::sleep_for(kSettles);
    return statusNumber(application.pid(), "VmRSS:") / kMiB;
}

void measureMemory(PrivateDesktop& desktop, std::vector<Row>& rows) {
    const double ten = residentMiB(desktop, kTags);
    awaitNoClients(desktop);
    const double each = (residentMiB(desktop, kManyTags) - ten) / static_cast<double>(kManyTags - kTags);
    rows.push_back({"resident memory, ten tags", fmt::format("{:.1f} MiB", ten), "< 60 MiB", ten < 60});
    rows.push_back(
        {"resident memory, each further tag", fmt::format("{:.2f} MiB", each), "< 1 MiB", each < 1});
}

// What the application does for so long, which includes nothing that anyone asks of it.
void measureIdling(PrivateDesktop& desktop, const std::string& mode, const Effort& effort,
                   std::vector<Row>& rows) {
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
    rows.push_back({fmt::format("processor time while idle, ten tags, {}", mode),
                    fmt::format("{:.3f} % of a core", 100 * share), "< 0.3 %", share < 0.003});
    // It looks for the overview 10 times a second and asks for the pointer 5 times, for whose answer it wakes
    // too.
    rows.push_back({fmt::format("wake-ups a second while idle, {}", mode),
                    fmt::format("{:.1f}", wokenEachSecond), "<= 20", wokenEachSecond <= 20});
}

// What the idle application asks the display server, which is for the pointer alone, and the message bus,
// where KWin does not tell of its overview by itself. So a poll asks nothing.
void measureRequests(const Effort& effort, std::vector<Row>& rows) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Kwin}});
    tagSpaces(desktop, kTags);
    const auto application = desktop.start({PrivateDesktop::program("orvello")});
    awaitClients(desktop, 2 * kTags);
    std::this_thread::sleep_for(kSettles);
    const auto log = desktop.folder() / "calls";
    const auto time = std::chrono::milliseconds(200) * effort.pairs;
    {
        const auto tracer = desktop.start({"strace", "-f", "-e", "trace=writev,sendmsg", "-o", log.string(),
                                           "-p", std::to_string(application.pid())});
        std::this_thread::sleep_for(time);
    }
    std::ifstream calls(log);
    std::map<std::string, int> sent;  // by the call
    for (std::string line; std::getline(calls, line);)
        for (const char* call : {"writev(", "sendmsg("})
            if (line.find(call) != std::string::npos) ++sent[call];
    if (sent["writev("] == 0) throw std::runtime_error("strace does not show the application's calls");
    const double seconds = std::chrono::duration<double>(time).count();
    const auto add = [&](const std::string& what, double each, double most) {
        rows.push_back(
            {what, fmt::format("{:.1f} a second", each), fmt::format("<= {:.1f}", most), each <= most});
    };
    add("questions to the display server while idle, KWin", sent["writev("] / seconds, 5.5);
    add("questions to the bus while idle, none waited for, KWin", sent["sendmsg("] / seconds, 2);
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
        awaitNoClients(desktop);
        return Milliseconds(end - start);
    };
}

}  // namespace

std::vector<Row> measureApplication(const Effort& effort) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    std::vector<Row> rows;
    tagSpaces(desktop, 1);
    rows.push_back(rowOf(
        "start to the first label / a bare Qt Widgets window",
        compare(std::max(effort.pairs / 5, 1), untilWindows(desktop, {PrivateDesktop::program("orvello")}, 1),
                untilWindows(desktop, {BARE_QT_WINDOW}, 1)),
        1.5));
    measureMemory(desktop, rows);
    awaitNoClients(desktop);
    tagSpaces(desktop, kTags);
    measureIdling(desktop, "always visible", effort, rows);
    awaitNoClients(desktop);
    hideDuringWork(desktop);
    measureIdling(desktop, "hidden during work", effort, rows);
    measureRequests(effort, rows);
    return rows;
}

}  // namespace benchmark
