#pragma once

#include <cstddef>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/Screens.h"
#include "platform/Spaces.h"

namespace orvellos {

struct SpaceInfo {
    std::string uuid;
    std::optional<platform::ManagedSpaceId> managedSpaceID;
    std::string displayIdentifier;   // empty when its display has none
    std::size_t indexInDisplay = 0;  // among the display's Spaces that carry a uuid
    bool isCurrent = false;
    bool operator==(const SpaceInfo&) const = default;
};

struct DisplaySpaces {
    std::optional<std::string> displayIdentifier;
    std::optional<std::string> currentSpaceUUID;
    std::optional<platform::ManagedSpaceId> currentManagedSpaceID;
    std::vector<SpaceInfo> spaces;
    bool operator==(const DisplaySpaces&) const = default;
};

// The Space layout of one answer of the window server, display after display in its order.
struct SpaceSnapshot {
    std::vector<DisplaySpaces> displays;

    // An absent answer gives an empty snapshot; Spaces without a uuid are left out.
    [[nodiscard]] static SpaceSnapshot of(const std::optional<platform::ManagedDisplaySpaces>& answer);
    bool operator==(const SpaceSnapshot&) const = default;
};

// What Spaces exist, in which order, on which display, and which is current: the one place that knows. Keeps
// no answer between two questions; each operation asks the window server anew. A failure gives an absent,
// empty or false result and no message.
class SpaceIdentifier {
  public:
    SpaceIdentifier(const platform::SpaceLayout& layout, platform::WindowSpaces& windowSpaces,
                    const platform::SpaceSwitchingEntries& entries, const platform::Screens& screens);

    [[nodiscard]] SpaceSnapshot snapshot() const;

    // Of the first display that has a current Space.
    [[nodiscard]] std::optional<std::string> currentSpaceUUID() const;
    // Of the display under the pointer; of the first display when there is no screen.
    [[nodiscard]] std::optional<std::string> currentSpaceUUIDOnPointerDisplay() const;
    // Of every display.
    [[nodiscard]] std::set<std::string> currentSpaceUUIDs() const;
    [[nodiscard]] std::optional<platform::ManagedSpaceId> currentManagedSpaceID() const;

    [[nodiscard]] std::set<std::string> allSpaceUUIDs() const;
    // Display after display, each display's Spaces in their order.
    [[nodiscard]] std::vector<std::string> orderedSpaceUUIDs() const;
    [[nodiscard]] std::vector<std::string> orderedSpaceUUIDsForDisplay(platform::DisplayId display) const;
    [[nodiscard]] std::vector<std::string> orderedSpaceUUIDsOfFirstDisplay() const;
    [[nodiscard]] std::vector<std::string> orderedSpaceUUIDsOnPointerDisplay() const;
    // 0-based, within orderedSpaceUUIDsOnPointerDisplay.
    [[nodiscard]] std::optional<std::size_t> currentSpaceIndexOnPointerDisplay() const;

    [[nodiscard]] std::optional<platform::ManagedSpaceId> managedSpaceID(const std::string& uuid) const;
    [[nodiscard]] std::optional<std::string> spaceUUID(platform::ManagedSpaceId space) const;
    [[nodiscard]] std::optional<platform::DisplayId> displayID(const std::string& uuid) const;
    // Whether several screens share their Spaces.
    [[nodiscard]] bool isSharedSpacesMode() const;

    [[nodiscard]] std::vector<platform::ManagedSpaceId> spaceIDsForWindow(
        platform::WindowNumber window) const;
    // Adds the window to the Space and takes it off the current one; false when there is no such Space.
    bool moveWindow(platform::WindowNumber window, const std::string& uuid) const;
    bool removeWindow(platform::WindowNumber window, const std::string& uuid) const;

    // Which entry points for switching were found: "setCurrent=…  show=…  hide=…".
    [[nodiscard]] std::string symbolStatusLine() const;
    [[nodiscard]] platform::ConnectionId mainConnectionID() const { return entries_.mainConnectionId(); }
    // Looked up once, at the first use; empty functions when the window server has none.
    [[nodiscard]] const platform::SetCurrentSpaceEntry& setCurrentSpaceEntry() const;
    [[nodiscard]] const platform::SpaceListEntry& showSpacesEntry() const;
    [[nodiscard]] const platform::SpaceListEntry& hideSpacesEntry() const;

  private:
    template <typename Function>
    struct EntryPoint {
        Function function;
        std::string name = "<none>";
    };
    struct EntryPoints {
        std::once_flag once;
        EntryPoint<platform::SetCurrentSpaceEntry> setCurrent;
        EntryPoint<platform::SpaceListEntry> show;
        EntryPoint<platform::SpaceListEntry> hide;
    };

    [[nodiscard]] std::optional<platform::DisplayId> pointerDisplayID() const;
    [[nodiscard]] bool matches(const DisplaySpaces& display, platform::DisplayId id) const;
    [[nodiscard]] std::optional<platform::DisplayId> displayIDOf(const std::string& identifier) const;
    const EntryPoints& entryPoints() const;

    const platform::SpaceLayout& layout_;
    platform::WindowSpaces& windowSpaces_;
    const platform::SpaceSwitchingEntries& entries_;
    const platform::Screens& screens_;
    mutable EntryPoints entryPoints_;
};

}  // namespace orvellos
