#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/Panels.h"
#include "platform/RunLoop.h"

namespace orvellos {

// Dismisses a panel when the user clicks elsewhere, for as long as it exists. Clicks on the application's
// other panels and on tag windows (which open and close a panel themselves) do not count, and none does while
// the colour panel is in use, whose eyedropper clicks anywhere.
class AutoDismiss {
  public:
    static constexpr platform::Duration kAfterColorPanel = platform::seconds(1.5);

    enum class WindowKind { ThisPanel, TagWindow, SiblingPanel, Other };
    struct ClickedWindow {
        WindowKind kind = WindowKind::Other;
        std::optional<std::string> title;
    };
    struct Surroundings {
        platform::MouseMonitor& mouse;
        platform::RunLoop& runLoop;
        std::function<bool()> isColorPanelVisible;
        std::function<ClickedWindow(platform::WindowNumber)> identify;  // a window of the application
    };

    // `dismiss` closes the panel and may end this object. Log lines call the panel by its title.
    AutoDismiss(Surroundings surroundings, std::string title, std::function<void()> dismiss);
    ~AutoDismiss();
    AutoDismiss(const AutoDismiss&) = delete;
    AutoDismiss& operator=(const AutoDismiss&) = delete;

  private:
    [[nodiscard]] bool isColorPanelActive();
    void localMouseDown(platform::WindowNumber window);
    void globalMouseDown();
    void fire();

    Surroundings surroundings_;
    std::string title_;
    std::function<void()> dismiss_;
    std::optional<platform::Instant> colorPanelSeen_;
    platform::Subscription localMonitor_;
    platform::Subscription globalMonitor_;
};

}  // namespace orvellos
