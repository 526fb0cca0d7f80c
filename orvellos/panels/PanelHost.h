#pragma once

#include <functional>
#include <memory>
#include <string>
#include <variant>

#include "orvellos/panels/About.h"
#include "orvellos/panels/CreateTagForm.h"
#include "orvellos/panels/EditTagsList.h"
#include "orvellos/panels/QuickSwitcher.h"
#include "orvellos/panels/SettingsForm.h"
#include "orvellos/panels/Toasts.h"
#include "orvellos/panels/WelcomeForm.h"
#include "platform/Panels.h"

namespace orvellos {

// What a panel shows. It outlives the panel.
using PanelContent =
    std::variant<CreateTagForm*, EditTagsList*, QuickSwitcher*, SettingsForm*, WelcomeForm*, const About*>;

// Makes the windows of panels and toasts.
class PanelHost : public ToastHost {
  public:
    // `willClose` is called once, when the user or its owner closes the panel.
    [[nodiscard]] virtual std::unique_ptr<platform::PanelWindow> makePanel(
        const platform::PanelShell& shell, const PanelContent& content, std::function<void()> willClose) = 0;
    // Whether a window of the application is a panel: one made here, an alert or the colour panel.
    [[nodiscard]] virtual bool isPanel(platform::WindowNumber window) const = 0;
    // Whether the system's colour panel is on the screen; the user may be picking a colour from any window
    // then.
    [[nodiscard]] virtual bool isColorPanelVisible() const = 0;
};

}  // namespace orvellos
