#include "platform/simulated/SimulatedSpaces.h"

#include <algorithm>
#include <utility>

namespace platform::simulated {

namespace {

std::string joined(std::string_view verb, std::span<const ManagedSpaceId> spaces) {
    std::string text(verb);
    for (const auto space : spaces) text += " " + std::to_string(space.value);
    return text;
}

auto withUuid(std::string_view uuid) {
    return [uuid](const SpaceEntry& space) { return space.uuid == uuid; };
}

}  // namespace

void SimulatedSpaces::addDisplay(std::string identifier, const std::vector<std::string>& uuids) {
    DisplayEntry display;
    display.identifier = std::move(identifier);
    display.spaces.emplace();
    for (const auto& uuid : uuids) display.spaces->push_back({uuid, ManagedSpaceId{++lastId_}});
    if (!uuids.empty()) display.currentSpace = display.spaces->front();
    displays_.push_back(std::move(display));
}

void SimulatedSpaces::addSpace(std::string uuid) {
    insertSpace(spaces().size(), std::move(uuid));
}

void SimulatedSpaces::insertSpace(std::size_t place, std::string uuid) {
    spaces().insert(spaces().begin() + static_cast<std::ptrdiff_t>(place),
                    {std::move(uuid), ManagedSpaceId{++lastId_}});
    renumber();
    notifyActiveSpaceChanged();
}

void SimulatedSpaces::swapSpaces(std::size_t one, std::size_t other) {
    std::swap(spaces().at(one), spaces().at(other));
    renumber();
    notifyActiveSpaceChanged();
}

void SimulatedSpaces::numberByPlace() {
    numberedByPlace_ = true;
    renumber();
}

void SimulatedSpaces::renumber() {
    if (!numberedByPlace_) return;
    auto& display = displays_.at(0);
    std::uint64_t place = 0;
    bool moved = false;
    for (auto& space : spaces()) {
        moved = std::exchange(space.managedSpaceId, ManagedSpaceId{++place}) != space.managedSpaceId || moved;
        if (display.currentSpace && display.currentSpace->uuid == space.uuid) display.currentSpace = space;
    }
    if (!moved) return;
    for (auto& [window, placed] : placed_) placed.number.outdate();
}

void SimulatedSpaces::removeSpace(std::string_view uuid) {
    for (auto& display : displays_) {
        auto& spaces = *display.spaces;
        const auto found = std::ranges::find_if(spaces, withUuid(uuid));
        if (found == spaces.end() || spaces.size() == 1) continue;
        const auto gone = *found;
        const auto heir = found == spaces.begin() ? *std::next(found) : *std::prev(found);
        spaces.erase(found);
        if (display.currentSpace == gone) display.currentSpace = heir;
        for (auto& [window, ids] : windows_)
            std::ranges::replace(ids, *gone.managedSpaceId, *heir.managedSpaceId);
        for (auto& [window, placed] : placed_)
            if (placed.uuid == gone.uuid) placed.uuid = *heir.uuid;
    }
    renumber();
    notifyActiveSpaceChanged();
}

void SimulatedSpaces::setCurrentSpace(std::string_view uuid) {
    for (auto& display : displays_) {
        const auto found = std::ranges::find_if(*display.spaces, withUuid(uuid));
        if (found == display.spaces->end() || display.currentSpace == *found) continue;
        display.currentSpace = *found;
        notifyActiveSpaceChanged();
    }
}

void SimulatedSpaces::setCurrentSpace(const std::string& displayIdentifier, ManagedSpaceId space) {
    calls_.push_back("setCurrent " + displayIdentifier + " " + std::to_string(space.value));
    if (!obeying_) return;
    for (const auto& display : displays_)
        for (const auto& entry : *display.spaces)
            if (entry.managedSpaceId == space) return setCurrentSpace(std::string_view(*entry.uuid));
}

void SimulatedSpaces::notifyActiveSpaceChanged() {
    runLoop_.post([observers = activeSpaceChanged_] { observers.notify(); });
}

void SimulatedSpaces::putWindow(WindowNumber window, std::vector<ManagedSpaceId> spaces) {
    if (numberedByPlace_) return place(window, spaces.front());
    windows_[window] = std::move(spaces);
}

void SimulatedSpaces::place(WindowNumber window, ManagedSpaceId space) {
    auto& [uuid, number] = placed_[window];
    const auto& target = *spaces().at(space.value - 1).uuid;
    const bool isTold = number.isOutdated() || uuid != target;
    uuid = target;
    number.ask(space);
    if (isTold) number.tell(space);
}

bool SimulatedSpaces::isOnActiveSpace(WindowNumber window) const {
    if (numberedByPlace_) {
        const auto found = placed_.find(window);
        return found == placed_.end() || displays_.at(0).currentSpace->uuid == found->second.uuid;
    }
    const auto on = copySpacesForWindow(window);
    return on.empty() || std::ranges::any_of(displays_, [&](const DisplayEntry& display) {
               return display.currentSpace && display.currentSpace->managedSpaceId == on.front();
           });
}

std::optional<ManagedDisplaySpaces> SimulatedSpaces::copyManagedDisplaySpaces() const {
    ++layoutReads_;
    if (!answering_) return std::nullopt;
    return displays_;
}

std::vector<ManagedSpaceId> SimulatedSpaces::copySpacesForWindow(WindowNumber window) const {
    if (const auto placed = placed_.find(window); numberedByPlace_) {
        const auto number = placed == placed_.end() ? std::nullopt : placed->second.number.get();
        return number && answering_ ? std::vector{*number} : std::vector<ManagedSpaceId>();
    }
    const auto found = windows_.find(window);
    if (!answering_ || found == windows_.end()) return {};
    return found->second;
}

void SimulatedSpaces::addWindowToSpace(WindowNumber window, ManagedSpaceId space) {
    calls_.push_back("add " + std::to_string(window.value) + " to " + std::to_string(space.value));
    if (numberedByPlace_) {
        if (obeying_) place(window, space);
        return;
    }
    auto& spaces = windows_[window];
    if (obeying_ && std::ranges::find(spaces, space) == spaces.end()) spaces.push_back(space);
}

void SimulatedSpaces::removeWindowFromSpace(WindowNumber window, ManagedSpaceId space) {
    calls_.push_back("remove " + std::to_string(window.value) + " from " + std::to_string(space.value));
    if (obeying_) std::erase(windows_[window], space);
}

SetCurrentSpaceEntry SimulatedSpaces::resolveSetCurrentSpace(std::string_view name) const {
    ++entryPointLookups_;
    if (!entryPoints_.contains(name)) return {};
    return [self = const_cast<SimulatedSpaces*>(this)](ConnectionId, const std::string& display,
                                                       ManagedSpaceId space) {
        self->setCurrentSpace(display, space);
    };
}

SpaceListEntry SimulatedSpaces::resolveSpaceList(std::string_view name) const {
    ++entryPointLookups_;
    if (!entryPoints_.contains(name)) return {};
    const std::string verb = name.find("Show") != std::string_view::npos ? "show" : "hide";
    return [this, verb](ConnectionId, std::span<const ManagedSpaceId> spaces) {
        calls_.push_back(joined(verb, spaces));
    };
}

}  // namespace platform::simulated
