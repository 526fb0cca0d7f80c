#include <fmt/format.h>
#include <poll.h>

#include <cstdlib>
#include <ctime>
#include <future>
#include <stdexcept>
#include <thread>

#include "benchmarks/PairedRuns.h"
#include "benchmarks/RunningProcess.h"
#include "benchmarks/TaggedSpaces.h"
#include "tests/support/PrivateDesktop.h"

namespace benchmark {

namespace {

using desktop_test::PrivateDesktop;
using desktop_test::Process;
using desktop_test::WindowManager;
using desktop_test::XClient;

constexpr int kChanges = 100000;
constexpr auto kFrame = std::chrono::milliseconds(16);
constexpr double kQuestionsOfARead = 2;  // the root's properties, then those of the window manager's window

// Sets the current desktop's property to the value that it has, over and over; the server tells of it each
// time.
void changeRootProperties(XClient& x) {
    const auto property = x.atom("_NET_CURRENT_DESKTOP");
    const std::uint32_t first = 0;
    for (int i = 0; i < kChanges; ++i)
        xcb_change_property(x.connection(), XCB_PROP_MODE_REPLACE, x.root(), property, XCB_ATOM_CARDINAL, 32,
                            1, &first);
    x.synchronize();
}

// The next event of that type; the others are dropped.
desktop_test::Reply<xcb_generic_event_t> awaitEvent(XClient& x, std::uint8_t type) {
    pollfd readable{xcb_get_file_descriptor(x.connection()), POLLIN, 0};
    while (true) {
        while (auto* event = xcb_poll_for_event(x.connection())) {
            desktop_test::Reply<xcb_generic_event_t> owned(event);
            if (desktop_test::typeOf(*owned) == type) return owned;
        }
        if (poll(&readable, 1, static_cast<int>(desktop_test::kGenerousDeadline.count())) <= 0)
            throw std::runtime_error("an event does not come");
    }
}

// Returns when the application has taken all events that came before: its tag answers whether it is alive
// (EWMH, _NET_WM_PING) in the order of its events.
void awaitDrained(PrivateDesktop& desktop, const Process& application) {
    XClient x(desktop.display());
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(x.connection(), x.root(), XCB_CW_EVENT_MASK, &mask);
    const auto windows = x.findByPid(static_cast<std::uint32_t>(application.pid()));
    if (windows.empty()) throw std::runtime_error("there is no tag");
    xcb_client_message_event_t ping{};
    ping.response_type = XCB_CLIENT_MESSAGE;
    ping.format = 32;
    ping.window = windows.front();
    ping.type = x.atom("WM_PROTOCOLS");
    ping.data.data32[0] = x.atom("_NET_WM_PING");
    ping.data.data32[2] = windows.front();
    xcb_send_event(x.connection(), 0, windows.front(), 0, reinterpret_cast<const char*>(&ping));
    xcb_flush(x.connection());
    const auto isAnswer = [&](const xcb_generic_event_t& event) {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        return message.type == ping.type && message.data.data32[0] == ping.data.data32[0];
    };
    while (!isAnswer(*awaitEvent(x, XCB_CLIENT_MESSAGE))) {
    }
}

// The processor time for taking the changes' events and no more, in a thread of its own.
class BareListener {
  public:
    explicit BareListener(const std::string& display) : x_(display) {
        const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(x_.connection(), x_.root(), XCB_CW_EVENT_MASK, &mask);
        x_.synchronize();
        used_ = std::async(std::launch::async, [this] {
            for (int i = 0; i < kChanges; ++i) static_cast<void>(awaitEvent(x_, XCB_PROPERTY_NOTIFY));
            timespec time{};
            clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
            return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
        });
    }
    std::chrono::nanoseconds used() { return used_.get(); }

  private:
    XClient x_;
    std::future<std::chrono::nanoseconds> used_;
};

Row measureProcessor(PrivateDesktop& desktop, const Process& application, const Effort& effort) {
    std::vector<double> ours;
    std::vector<double> theirs;
    std::vector<double> ratios;
    for (int i = 0; i < std::max(effort.pairs / 20, 1); ++i) {
        BareListener bare(desktop.display());
        const auto before = processorTime(application.pid());
        changeRootProperties(desktop.x());
        awaitDrained(desktop, application);
        ours.push_back(Milliseconds(processorTime(application.pid()) - before).count());
        theirs.push_back(Milliseconds(bare.used()).count());
        ratios.push_back(ours.back() / theirs.back());
    }
    return rowOf("100,000 root property changes, processor time / a bare client",
                 {Milliseconds(median(ours)), Milliseconds(median(theirs)), median(ratios)}, 3);
}

Row measureReads(PrivateDesktop& desktop, const Process& application) {
    CallCounter calls(desktop, application.pid(), "writev");
    const auto start = std::chrono::steady_clock::now();
    changeRootProperties(desktop.x());
    awaitDrained(desktop, application);
    const auto frames = (std::chrono::steady_clock::now() - start) / kFrame + 1;
    calls.stop();
    const double each = calls.count("writev") / kQuestionsOfARead / static_cast<double>(frames);
    return {"100,000 root property changes, reads of the desktops a frame", fmt::format("{:.2f}", each),
            "<= 1", each <= 1};
}

}  // namespace

std::vector<Row> measureFlood(const Effort& effort) {
    PrivateDesktop desktop({.windowManager = {.kind = WindowManager::Openbox}});
    tagSpaces(desktop, kUsualTags);
    const auto application = desktop.start({PrivateDesktop::program("orvello")});
    awaitClients(desktop, kUsualTags);
    std::this_thread::sleep_for(kSettlingTime);
    changeRootProperties(desktop.x());
    awaitDrained(desktop, application);
    const double before = residentMiB(application.pid());
    std::vector<Row> rows = {measureProcessor(desktop, application, effort)};
    const double grown = residentMiB(application.pid()) - before;
    rows.push_back(
        {"memory that such floods leave behind", fmt::format("{:.2f} MiB", grown), "< 0.5 MiB", grown < 0.5});
    rows.push_back(measureReads(desktop, application));
    return rows;
}

}  // namespace benchmark
