#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Observers.h"
#include "platform/Windows.h"

namespace platform {

// The window server's number for a Space; 0 is never an id.
struct ManagedSpaceId {
    std::uint64_t value = 0;
    auto operator<=>(const ManagedSpaceId&) const = default;
};

struct SpaceEntry {
    std::optional<std::string> uuid;
    std::optional<ManagedSpaceId> managedSpaceId;
    bool operator==(const SpaceEntry&) const = default;
};

// One display of the window server's answer, with whatever of it could be read.
struct DisplayEntry {
    std::optional<std::string> identifier;  // "Main", or the display's UUID in textual form
    std::optional<SpaceEntry> currentSpace;
    std::optional<std::vector<SpaceEntry>> spaces;  // in Mission Control order
    bool operator==(const DisplayEntry&) const = default;
};
using ManagedDisplaySpaces = std::vector<DisplayEntry>;

// Where the Space layout is read.
class SpaceLayout {
  public:
    virtual ~SpaceLayout() = default;

    // The displays with their Spaces; absent when the window server has no answer, or none it can vouch for.
    [[nodiscard]] virtual std::optional<ManagedDisplaySpaces> copyManagedDisplaySpaces() const = 0;
};

// Which windows are on which Spaces.
class WindowSpaces {
  public:
    virtual ~WindowSpaces() = default;

    // Empty when the window is unknown, and when the Spaces have got other ids since it was told where it is.
    [[nodiscard]] virtual std::vector<ManagedSpaceId> copySpacesForWindow(WindowNumber window) const = 0;
    // Both are requests: what comes of them shows in a later copySpacesForWindow.
    virtual void addWindowToSpace(WindowNumber window, ManagedSpaceId space) = 0;
    virtual void removeWindowFromSpace(WindowNumber window, ManagedSpaceId space) = 0;
};

using ConnectionId = std::uint32_t;
using SetCurrentSpaceEntry =
    std::function<void(ConnectionId, const std::string& displayIdentifier, ManagedSpaceId)>;
using SpaceListEntry = std::function<void(ConnectionId, std::span<const ManagedSpaceId>)>;

// The window server's optional entry points for switching Spaces, looked up by name.
class SpaceSwitchingEntries {
  public:
    virtual ~SpaceSwitchingEntries() = default;

    [[nodiscard]] virtual ConnectionId mainConnectionId() const = 0;
    // An empty function when nothing of that name is there.
    [[nodiscard]] virtual SetCurrentSpaceEntry resolveSetCurrentSpace(std::string_view name) const = 0;
    [[nodiscard]] virtual SpaceListEntry resolveSpaceList(std::string_view name) const = 0;
};

// Tells of changes of the current Space and of the set of Spaces.
class SpaceNotifications {
  public:
    virtual ~SpaceNotifications() = default;
    // Delivered on the main queue.
    virtual Subscription onActiveSpaceChanged(std::function<void()> action) = 0;
};

// The number of the Space that a window is on by the window manager's word, where Spaces are numbered by
// their places in a row. When the row changes, windows stay where they are and their numbers are others,
// which a window manager need not tell. So nothing that was told before counts, and of what is told
// afterwards only the answer to a question: the number that the window was asked for.
template <typename Number>
class SpaceNumber {
  public:
    // Absent until a number has been told that counts.
    [[nodiscard]] std::optional<Number> get() const { return isOutdated_ ? std::nullopt : told_; }
    // Where the window is to be: what was asked for and not answered yet, else where it is.
    [[nodiscard]] std::optional<Number> wanted() const { return asked_ ? asked_ : get(); }
    // Whether the row has changed since a number was told.
    [[nodiscard]] bool isOutdated() const { return isOutdated_; }

    // The row has changed.
    void outdate() {
        isOutdated_ = true;
        asked_.reset();
    }
    // The window manager is asked to have the window there.
    void ask(Number number) { asked_ = number; }
    // It has told that the window is there.
    void tell(Number number) {
        if (isOutdated_ && asked_ != number) return;
        isOutdated_ = false;
        told_ = number;
        asked_.reset();
    }

  private:
    std::optional<Number> told_;
    std::optional<Number> asked_;
    bool isOutdated_ = false;
};

}  // namespace platform
