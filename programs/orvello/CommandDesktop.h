#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Screens.h"
#include "platform/Spaces.h"
#include "platform/WindowList.h"
#include "platform/x11/spaces/EwmhSpaceLayout.h"
#include "platform/x11/spaces/EwmhSpaceSwitching.h"
#include "platform/x11/windows/X11WindowList.h"

// The desktop as one command sees it. All its answers together take two seconds at most; whatever the X
// server or the window manager has not told by then has no answer, as when there is no X server at all. The
// layout of the Spaces is read once, so that a command acts on one layout.
class CommandDesktop final : public platform::SpaceLayout,
                             public platform::WindowSpaces,
                             public platform::SpaceSwitchingEntries,
                             public platform::WindowList {
  public:
    // `argv` as main got it, for starting over when the X server does not answer; one object a process.
    explicit CommandDesktop(char** argv);
    ~CommandDesktop() override;
    CommandDesktop(const CommandDesktop&) = delete;
    CommandDesktop& operator=(const CommandDesktop&) = delete;

    // Has the layout read again when it is next asked for.
    void forgetLayout() { layout_.reset(); }

    // The current desktop's number, counted from 0.
    [[nodiscard]] std::optional<std::uint32_t> currentDesktop() const;

    [[nodiscard]] std::optional<platform::ManagedDisplaySpaces> copyManagedDisplaySpaces() const override;
    [[nodiscard]] std::vector<platform::ManagedSpaceId> copySpacesForWindow(
        platform::WindowNumber window) const override;
    // No command moves a window.
    void addWindowToSpace(platform::WindowNumber /*window*/, platform::ManagedSpaceId /*space*/) override {}
    void removeWindowFromSpace(platform::WindowNumber /*window*/,
                               platform::ManagedSpaceId /*space*/) override {}
    [[nodiscard]] platform::ConnectionId mainConnectionId() const override;
    [[nodiscard]] platform::SetCurrentSpaceEntry resolveSetCurrentSpace(std::string_view name) const override;
    [[nodiscard]] platform::SpaceListEntry resolveSpaceList(std::string_view name) const override;
    [[nodiscard]] std::optional<std::vector<platform::WindowInfo>> copyWindowsExcludingDesktopElements()
        const override;

  private:
    struct Connected;

    // The connection, made at the first question; null without an X server.
    [[nodiscard]] Connected* connected() const;

    mutable bool hasConnected_ = false;
    mutable std::unique_ptr<Connected> connected_;
    mutable std::optional<std::optional<platform::ManagedDisplaySpaces>> layout_;
};

// One screen that is the main display, with the pointer on it: desktops of X11 span all monitors, so no
// command needs to know more.
class CommandScreen final : public platform::Screens {
  public:
    [[nodiscard]] std::vector<platform::Screen> screens() const override;
    [[nodiscard]] std::optional<platform::Screen> mainScreen() const override { return screens().front(); }
    [[nodiscard]] platform::DisplayId mainDisplayId() const override { return {1}; }
    [[nodiscard]] std::optional<std::string> displayUuid(platform::DisplayId /*display*/) const override {
        return std::nullopt;
    }
    // A screen that a command saw change would be another command's.
    platform::Subscription onParametersChanged(std::function<void()> /*action*/) override { return {}; }
    [[nodiscard]] platform::Point pointerLocation() const override { return {}; }
};
