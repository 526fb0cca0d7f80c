#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Observers.h"
#include "platform/RunLoop.h"
#include "platform/Spaces.h"

namespace platform::simulated {

// A window server's Spaces in memory: displays with their Spaces, the windows on them and the entry points
// for switching, each of which a test can take away.
class SimulatedSpaces final : public SpaceLayout,
                              public WindowSpaces,
                              public SpaceSwitchingEntries,
                              public SpaceNotifications {
  public:
    // A call that asked for a change, in words: "add 7 to 2", "remove 7 from 1", "setCurrent Main 2", "show
    // 2", "hide 1".
    using Call = std::string;

    explicit SimulatedSpaces(RunLoop& runLoop) : runLoop_(runLoop) {}

    // Adds a display with these Spaces, the first of them current. Managed ids count from 1 over all
    // displays.
    void addDisplay(std::string identifier, const std::vector<std::string>& uuids);
    // Appends a Space to the first display, or removes one wherever it is; windows on it go to the Space
    // before.
    void addSpace(std::string uuid);
    void removeSpace(std::string_view uuid);
    // Inserts one there into the first display, or changes the places of two of its.
    void insertSpace(std::size_t place, std::string uuid);
    void swapSpaces(std::size_t one, std::size_t other);
    // From now on a Space's id is its place on the first display, counted from 1, and slides under the
    // windows, each of which is on one Space then. Its number is not told anew when it slides, only when the
    // window is asked for a Space again.
    void numberByPlace();
    // Switches as a user does: notifies when something changes. Nothing happens for an unknown uuid.
    void setCurrentSpace(std::string_view uuid);
    // Delivers the notification alone.
    void notifyActiveSpaceChanged();

    void putWindow(WindowNumber window, std::vector<ManagedSpaceId> spaces);
    // The Space on which the window is, numbered by place, whatever is told of it.
    [[nodiscard]] std::string trueSpaceOf(WindowNumber window) const { return placed_.at(window).uuid; }
    // Whether the window is on a display's current Space; one on no Space counts as being on every one.
    [[nodiscard]] bool isOnActiveSpace(WindowNumber window) const;
    void forgetWindow(WindowNumber window) {
        windows_.erase(window);
        placed_.erase(window);
    }

    // What the window server answers, for tests of odd answers; every change above works on it too.
    ManagedDisplaySpaces& displays() { return displays_; }
    // Whether layout questions, and window questions, are answered at all.
    void setAnswering(bool answering) { answering_ = answering; }
    // Whether requests to move windows, and to switch, come to anything; they are recorded all the same.
    void setObeying(bool obeying) { obeying_ = obeying; }
    // The names under which entry points are found; the first candidate of each role at the start.
    std::set<std::string, std::less<>>& entryPoints() { return entryPoints_; }

    [[nodiscard]] const std::vector<Call>& calls() const { return calls_; }
    void forgetCalls() { calls_.clear(); }
    [[nodiscard]] int layoutReads() const { return layoutReads_; }
    [[nodiscard]] int entryPointLookups() const { return entryPointLookups_; }

    [[nodiscard]] std::optional<ManagedDisplaySpaces> copyManagedDisplaySpaces() const override;
    [[nodiscard]] std::vector<ManagedSpaceId> copySpacesForWindow(WindowNumber window) const override;
    void addWindowToSpace(WindowNumber window, ManagedSpaceId space) override;
    void removeWindowFromSpace(WindowNumber window, ManagedSpaceId space) override;
    [[nodiscard]] ConnectionId mainConnectionId() const override { return 99; }
    [[nodiscard]] SetCurrentSpaceEntry resolveSetCurrentSpace(std::string_view name) const override;
    [[nodiscard]] SpaceListEntry resolveSpaceList(std::string_view name) const override;
    Subscription onActiveSpaceChanged(std::function<void()> action) override {
        return activeSpaceChanged_.subscribe(std::move(action));
    }

  private:
    struct PlacedWindow {
        std::string uuid;
        SpaceNumber<ManagedSpaceId> number;
    };

    void setCurrentSpace(const std::string& displayIdentifier, ManagedSpaceId space);
    void renumber();
    void place(WindowNumber window, ManagedSpaceId space);
    [[nodiscard]] std::vector<SpaceEntry>& spaces() { return *displays_.at(0).spaces; }

    RunLoop& runLoop_;
    ManagedDisplaySpaces displays_;
    std::map<WindowNumber, std::vector<ManagedSpaceId>> windows_;
    bool numberedByPlace_ = false;
    std::map<WindowNumber, PlacedWindow> placed_;
    std::uint64_t lastId_ = 0;
    bool answering_ = true;
    bool obeying_ = true;
    std::set<std::string, std::less<>> entryPoints_ = {"SLSManagedDisplaySetCurrentSpace", "SLSShowSpaces",
                                                       "SLSHideSpaces"};
    mutable std::vector<Call> calls_;
    mutable int layoutReads_ = 0;
    mutable int entryPointLookups_ = 0;
    Observers<> activeSpaceChanged_;
};

}  // namespace platform::simulated
