#pragma once

#include <functional>

#include "orvellos/panels/PanelHost.h"
#include "platform/x11/connection/Atoms.h"
#include "ui/status/QtMenuBar.h"
#include "ui/widgets/ColorPanel.h"

namespace ui {

// Makes panels and toasts as windows of the toolkit.
class QtPanelHost final : public orvellos::PanelHost {
  public:
    // The menu bar's keys work in every panel. `followCompositing` tells at once and on every change whether
    // there is a compositor.
    struct Services {
        const platform::x11::Atoms& atoms;
        const QtMenuBar& menuBar;
        const platform::Screens& screens;
        const platform::WindowFocus& focus;
        std::function<platform::Subscription(std::function<void(bool)>)> followCompositing;
    };
    explicit QtPanelHost(Services services) : services_(std::move(services)) {}

    [[nodiscard]] std::unique_ptr<platform::PanelWindow> makePanel(const platform::PanelShell& shell,
                                                                   const orvellos::PanelContent& content,
                                                                   std::function<void()> willClose) override;
    [[nodiscard]] std::unique_ptr<platform::ToastWindow> makeToast(
        const orvellos::UndoToastView& view) override;
    [[nodiscard]] bool isPanel(platform::WindowNumber window) const override;
    [[nodiscard]] bool isColorPanelVisible() const override { return colorPanel_.isVisible(); }

  private:
    Services services_;
    ColorPanel colorPanel_;
};

}  // namespace ui
