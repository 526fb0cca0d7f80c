#include "platform/x11/spaces/EwmhSpaceLayout.h"

#include <algorithm>

#include "platform/x11/connection/NameUuid.h"

namespace platform::x11 {

namespace {

constexpr const char* kNamespace = "58387fda-312d-425c-966d-2f3e3931d328";
constexpr auto kReplacementTime = std::chrono::milliseconds(600);
constexpr auto kReplacementStep = std::chrono::milliseconds(100);

}  // namespace

std::vector<std::string> desktopNumberUuids(std::uint32_t count) {
    std::vector<std::string> uuids;
    uuids.reserve(count);
    for (std::uint32_t number = 1; number <= count; ++number)
        uuids.push_back(nameUuid(kNamespace, "desktop-" + std::to_string(number)));
    return uuids;
}

ManagedDisplaySpaces managedDisplaySpaces(DesktopRow desktops) {
    DisplayEntry main;
    main.identifier = "Main";
    main.spaces.emplace();
    main.spaces->reserve(desktops.ids.size());
    for (auto& id : desktops.ids)
        main.spaces->push_back({std::move(id), ManagedSpaceId{main.spaces->size() + 1}});
    if (desktops.current && *desktops.current < main.spaces->size())
        main.currentSpace = main.spaces->at(*desktops.current);
    return {std::move(main)};
}

EwmhSpaceLayout::Reading EwmhSpaceLayout::read() const {
    const auto root = readRoot(connection_, atoms_);
    if (root.state != EwmhRoot::State::Plausible)
        return {std::nullopt, root.state == EwmhRoot::State::Inconsistent};
    if (!root.desktops.isKwin())
        return {managedDisplaySpaces({desktopNumberUuids(root.desktops.count), root.desktops.current})};
    auto row = askKwin_();
    if (!row || row->ids.size() != root.desktops.count) return {std::nullopt, true};
    if (!row->current) row->current = root.desktops.current;
    return {managedDisplaySpaces(std::move(*row))};
}

std::optional<ManagedDisplaySpaces> EwmhSpaceLayout::copyManagedDisplaySpaces() const {
    const auto end = monotonicNow() + kReplacementTime;
    auto reading = read();
    if (!reading.mayChangeSoon) return std::move(reading.answer);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_.get(), connection_.root(), XCB_CW_EVENT_MASK, &events);
    while (reading.mayChangeSoon && monotonicNow() < end && !connection_.isBroken()) {
        const auto change = connection_.nextEvent(std::min(end, monotonicNow() + kReplacementStep));
        reading = read();
    }
    return std::move(reading.answer);
}

}  // namespace platform::x11
