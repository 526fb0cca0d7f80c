#include "ui/panels/QtPanelHost.h"

#include <QApplication>
#include <variant>

#include "ui/panels/AboutView.h"
#include "ui/panels/CreateTagView.h"
#include "ui/panels/EditTagsView.h"
#include "ui/panels/QtPanel.h"
#include "ui/panels/QtToast.h"
#include "ui/panels/QuickSwitcherView.h"
#include "ui/panels/SettingsView.h"
#include "ui/panels/WelcomeView.h"
#include "ui/shell/ToolkitPlaces.h"

namespace ui {

namespace {

class PanelHandle final : public platform::PanelWindow {
  public:
    explicit PanelHandle(std::unique_ptr<QtPanel> panel) : panel_(std::move(panel)) {}

    [[nodiscard]] platform::WindowNumber number() const override { return panel_->number(); }
    [[nodiscard]] bool isVisible() const override { return panel_->isVisible(); }
    void makeKeyAndOrderFront() override { panel_->makeKeyAndOrderFront(); }
    void close() override { panel_->close(); }

  private:
    std::unique_ptr<QtPanel> panel_;
};

class ToastHandle final : public platform::ToastWindow {
  public:
    ToastHandle(const orvellos::UndoToastView& view, const QtPanelHost::Services& services)
        : toast_(std::make_unique<QtToast>(view, services.atoms)),
          screens_(services.screens),
          compositing_(services.followCompositing([this](bool isComposited) {
              const auto before = toast_->capsule().topLeft();
              toast_->setComposited(isComposited);
              toast_->move(toast_->pos() + before - toast_->capsule().topLeft());
          })) {}

    [[nodiscard]] platform::WindowNumber number() const override {
        return {static_cast<std::int64_t>(toast_->winId())};
    }
    [[nodiscard]] platform::Size fittingSize() const override {
        const auto size = toast_->capsule().size();
        return {static_cast<double>(size.width()), static_cast<double>(size.height())};
    }
    void setFrameOrigin(platform::Point origin) override {
        const auto capsule = toast_->capsule();
        toast_->move(toToolkit({origin.x, origin.y + capsule.height()}, screens_) - capsule.topLeft());
    }
    void orderFrontRegardless() override {
        toast_->show();
        toast_->raise();
    }

  private:
    std::unique_ptr<QtToast> toast_;
    const platform::Screens& screens_;
    platform::Subscription compositing_;
};

// The view of each kind of content.
struct ViewMaker {
    QWidget* operator()(orvellos::CreateTagForm* form) const { return new CreateTagView(*form, colorPanel); }
    QWidget* operator()(orvellos::EditTagsList* list) const {
        return new EditTagsView(*list, colorPanel, atoms);
    }
    QWidget* operator()(orvellos::QuickSwitcher* switcher) const { return new QuickSwitcherView(*switcher); }
    QWidget* operator()(orvellos::SettingsForm* form) const { return new SettingsView(*form); }
    QWidget* operator()(orvellos::WelcomeForm* form) const { return new WelcomeView(*form); }
    QWidget* operator()(const orvellos::About* about) const { return new AboutView(*about); }

    ColorPanel& colorPanel;
    const platform::x11::Atoms& atoms;
};

}  // namespace

std::unique_ptr<platform::PanelWindow> QtPanelHost::makePanel(const platform::PanelShell& shell,
                                                              const orvellos::PanelContent& content,
                                                              std::function<void()> willClose) {
    auto panel =
        std::make_unique<QtPanel>(shell, std::visit(ViewMaker{colorPanel_, services_.atoms}, content),
                                  services_.focus, std::move(willClose));
    services_.menuBar.attachTo(*panel);
    return std::make_unique<PanelHandle>(std::move(panel));
}

std::unique_ptr<platform::ToastWindow> QtPanelHost::makeToast(const orvellos::UndoToastView& view) {
    return std::make_unique<ToastHandle>(view, services_);
}

bool QtPanelHost::isPanel(platform::WindowNumber window) const {
    for (const auto* widget : QApplication::topLevelWidgets()) {
        if (static_cast<std::int64_t>(widget->internalWinId()) != window.value) continue;
        return qobject_cast<const QDialog*>(widget) || dynamic_cast<const QtPanel*>(widget) ||
               dynamic_cast<const QtToast*>(widget);
    }
    return false;
}

}  // namespace ui
