#pragma once

#include <optional>
#include <string>

#include "platform/Panels.h"
#include "platform/RunLoop.h"

namespace orvellos {

// Dismisses a panel when the user clicks elsewhere, for as long as it exists. Clicks on the application's
// other panels and on tag windows (which open and close a panel themselves) do not count. No click counts
// while the colour panel is in use, whose eyedropper clicks anywhere, or shortly after.
class AutoDismiss {
  public:
    static constexpr platform::Duration kColorPanelGrace = platform::seconds(1.5);

    enum class WindowKind { ThisPanel, TagWindow, SiblingPanel, Other };
    struct ClickedWindow {
        WindowKind kind = WindowKind::Other;
        std::optional<std::string> title;
    };
    // The panel that is dismissed, among the application's windows.
    class Owner {
      public:
        virtual ~Owner() = default;
        [[nodiscard]] virtual bool isColorPanelVisible() const = 0;
        // What a window of the application is to this panel.
        [[nodiscard]] virtual ClickedWindow identify(platform::WindowNumber window) const = 0;
        // Closes the panel, and may end what dismisses it.
        virtual void dismiss() = 0;
    };

    // Log lines call the panel by its title.
    AutoDismiss(platform::MouseMonitor& mouse, platform::RunLoop& runLoop, std::string title, Owner& owner);
    ~AutoDismiss();
    AutoDismiss(const AutoDismiss&) = delete;
    AutoDismiss& operator=(const AutoDismiss&) = delete;

  private:
    [[nodiscard]] bool isColorPanelActive();
    void localMouseDown(platform::WindowNumber window);
    void globalMouseDown();
    void fire();

    platform::RunLoop& runLoop_;
    std::string title_;
    Owner& owner_;
    bool hasFired_ = false;
    std::optional<platform::Instant> colorPanelSeen_;
    platform::Subscription localMonitor_;
    platform::Subscription globalMonitor_;
};

}  // namespace orvellos
