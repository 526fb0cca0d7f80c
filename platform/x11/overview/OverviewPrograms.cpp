#include "platform/x11/overview/OverviewPrograms.h"

#include <xcb/xcbext.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "platform/Text.h"
#include "platform/x11/spaces/EwmhDesktops.h"
#include "platform/x11/windows/WindowClass.h"

namespace platform::x11 {

namespace {

constexpr std::uint32_t kMostClassLongs = 64;
constexpr auto kUsualAnswerTime = std::chrono::milliseconds(5);
constexpr auto kSlowAnswerTime = std::chrono::milliseconds(50);
constexpr std::array<std::string_view, 2> kNames = {"xfdashboard", "skippy-xd"};

bool isOverviewClass(std::string_view windowClass) {
    const auto name = classPart(windowClass);
    return name && std::ranges::any_of(kNames, [&](auto known) { return equalIgnoringCase(*name, known); });
}

}  // namespace

std::span<const std::string_view> OverviewPrograms::names() {
    return kNames;
}

OverviewPrograms::OverviewPrograms(XConnection& connection, const Atoms& atoms, XEvents& events,
                                   RunLoop& runLoop, Screens& screens, bool areInstalled)
    : connection_(connection),
      atoms_(atoms),
      runLoop_(runLoop),
      screens_(screens),
      areInstalled_(areInstalled),
      screensChanged_(screens.onParametersChanged([this] { update(); })),
      subscription_(events.subscribe([this](const auto& event) {
          handle(event);
          update();
      })) {
    events.selectOnRoot(XCB_EVENT_MASK_PROPERTY_CHANGE);
    if (areInstalled) events.selectOnRoot(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    readClients();
}

OverviewPrograms::~OverviewPrograms() {
    for (const auto& question : questions_) xcb_discard_reply(connection_.get(), question.sequence);
}

void OverviewPrograms::update() {
    const bool isOpen =
        std::ranges::any_of(overviews_, [this](const auto& entry) { return fillsAScreen(entry.second); });
    if (std::exchange(isOpen_, isOpen) != isOpen) tellOverviewChanged();
}

bool OverviewPrograms::fillsAScreen(const Window& window) const {
    if (!window.isMapped.value_or(false) || !window.size) return false;
    return std::ranges::any_of(screens_.screens(), [&](const Screen& screen) {
        return window.size->width >= screen.frame.width * screen.backingScaleFactor - 1 &&
               window.size->height >= screen.frame.height * screen.backingScaleFactor - 1;
    });
}

void OverviewPrograms::handle(const xcb_generic_event_t& event) {
    switch (XEvents::type(event)) {
        case XCB_PROPERTY_NOTIFY: {
            const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (property.window == connection_.root() && property.atom == atoms_[Atom::NetClientList])
                readClients();
            break;
        }
        case XCB_MAP_NOTIFY: {
            const auto& map = reinterpret_cast<const xcb_map_notify_event_t&>(event);
            handleMapped(map.window, map.override_redirect != 0);
            break;
        }
        case XCB_UNMAP_NOTIFY:
            if (auto* window = find(reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window))
                window->isMapped = false;
            break;
        case XCB_CONFIGURE_NOTIFY: {
            const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
            if (auto* window = find(configure.window)) window->size = {configure.width, configure.height};
            break;
        }
        case XCB_DESTROY_NOTIFY:
            overviews_.erase(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
            break;
        default:
            break;
    }
}

OverviewPrograms::Window* OverviewPrograms::find(xcb_window_t window) {
    const auto found = overviews_.find(window);
    return found == overviews_.end() ? nullptr : &found->second;
}

void OverviewPrograms::handleMapped(xcb_window_t window, bool isUnmanaged) {
    if (auto* known = find(window))
        known->isMapped = true;
    else if (isUnmanaged)
        look(window);
}

void OverviewPrograms::ask(unsigned sequence, std::function<void(const void* reply)> handle) {
    questions_.push_back({sequence, std::move(handle)});
    collectLater(kUsualAnswerTime);
}

void OverviewPrograms::collectLater(Duration delay) {
    connection_.flush();
    if (!answersDue_.isActive()) answersDue_ = runLoop_.after(delay, [this] { collectAnswers(); });
}

// The server answers in the order of the questions.
void OverviewPrograms::collectAnswers() {
    answersDue_.cancel();
    while (!questions_.empty()) {
        void* memory = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(connection_.get(), questions_.front().sequence, &memory, &error) == 0) break;
        const Reply<void> reply(memory);
        const Reply<xcb_generic_error_t> refused(error);
        const auto question = std::move(questions_.front());
        questions_.erase(questions_.begin());
        question.handle(reply.get());
    }
    if (!questions_.empty()) collectLater(kSlowAnswerTime);
    update();
}

// The server may answer a read that is going on with the list from before the latest change.
void OverviewPrograms::readClients() {
    if (std::exchange(readsClients_, true)) {
        readsClientsAgain_ = true;
        return;
    }
    const auto cookie = requestProperty(connection_, connection_.root(), atoms_[Atom::NetClientList],
                                        XCB_ATOM_WINDOW, kMostClients);
    ask(cookie.sequence, [this](const void* reply) {
        readsClients_ = false;
        const auto windows = values32(static_cast<const xcb_get_property_reply_t*>(reply), XCB_ATOM_WINDOW);
        std::vector<xcb_window_t> clients(windows.begin(), windows.end());
        std::ranges::sort(clients);
        std::vector<xcb_window_t> added;
        std::ranges::set_difference(clients, clients_, std::back_inserter(added));
        clients_ = std::move(clients);
        for (const auto window : added) look(window);
        if (std::exchange(readsClientsAgain_, false)) readClients();
    });
}

void OverviewPrograms::look(xcb_window_t window) {
    if (overviews_.contains(window)) return;
    const auto cookie =
        requestProperty(connection_, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, kMostClassLongs);
    ask(cookie.sequence, [this, window](const void* reply) {
        if (isOverviewClass(text8(static_cast<const xcb_get_property_reply_t*>(reply)))) follow(window);
    });
}

// Selects the window's events before asking about it, so that no change is missed. Events are newer than an
// answer that is collected after them.
void OverviewPrograms::follow(xcb_window_t window) {
    overviews_.try_emplace(window);
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &mask);
    const auto geometry = xcb_get_geometry(connection_.get(), window);
    const auto attributes = xcb_get_window_attributes(connection_.get(), window);
    ask(geometry.sequence, [this, window](const void* memory) {
        const auto* reply = static_cast<const xcb_get_geometry_reply_t*>(memory);
        auto* followed = find(window);
        if (reply && followed && !followed->size) followed->size = {reply->width, reply->height};
    });
    ask(attributes.sequence, [this, window](const void* memory) {
        const auto* reply = static_cast<const xcb_get_window_attributes_reply_t*>(memory);
        auto* followed = find(window);
        if (!reply)
            overviews_.erase(window);  // it is gone
        else if (followed && !followed->isMapped)
            followed->isMapped = reply->map_state != XCB_MAP_STATE_UNMAPPED;
    });
}

}  // namespace platform::x11
