#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "orvellos/panels/PanelHost.h"

namespace orvellos {

// A panel in memory, for as long as its window exists.
struct SimulatedPanel {
    platform::PanelShell shell;
    PanelContent content;
    std::function<void()> willClose;
    bool visible = false;

    void close() {
        visible = false;
        if (const auto told = std::exchange(willClose, nullptr)) told();
    }
};

// A toast in memory.
struct SimulatedToast {
    UndoToastView view;
    platform::Point origin{-1, -1};
    bool visible = false;
};

// Panels and toasts that a test looks into. Each has a number above 1,000.
class SimulatedPanelHost final : public PanelHost {
  public:
    std::map<platform::WindowNumber, std::shared_ptr<SimulatedPanel>> panels;
    std::map<platform::WindowNumber, std::shared_ptr<SimulatedToast>> toasts;
    bool colorPanelVisible = false;
    std::vector<std::string> shown;  // the panels' titles, whenever one is brought to the front

    [[nodiscard]] std::unique_ptr<platform::PanelWindow> makePanel(const platform::PanelShell& shell,
                                                                   const PanelContent& content,
                                                                   std::function<void()> willClose) override {
        panels[{++last_}] =
            std::make_shared<SimulatedPanel>(SimulatedPanel{shell, content, std::move(willClose)});
        return std::make_unique<Window>(*this, last_);
    }
    [[nodiscard]] std::unique_ptr<platform::ToastWindow> makeToast(const UndoToastView& view) override {
        toasts[{++last_}] = std::make_shared<SimulatedToast>(SimulatedToast{view});
        return std::make_unique<Toast>(*this, last_);
    }
    [[nodiscard]] bool isPanel(platform::WindowNumber window) const override {
        return panels.contains(window) || toasts.contains(window);
    }
    [[nodiscard]] bool isColorPanelVisible() const override { return colorPanelVisible; }

    // The live panel of that title; null when there is none.
    [[nodiscard]] std::shared_ptr<SimulatedPanel> titled(const std::string& title) const {
        for (const auto& [number, panel] : panels)
            if (panel->shell.title == title) return panel;
        return nullptr;
    }
    [[nodiscard]] platform::WindowNumber numberOf(const std::string& title) const {
        for (const auto& [number, panel] : panels)
            if (panel->shell.title == title) return number;
        return {};
    }

  private:
    class Window final : public platform::PanelWindow {
      public:
        Window(SimulatedPanelHost& host, std::int64_t number) : host_(host), number_{number} {}
        ~Window() override { host_.panels.erase(number_); }
        [[nodiscard]] platform::WindowNumber number() const override { return number_; }
        [[nodiscard]] bool isVisible() const override { return host_.panels.at(number_)->visible; }
        void makeKeyAndOrderFront() override {
            host_.panels.at(number_)->visible = true;
            host_.shown.push_back(host_.panels.at(number_)->shell.title);
        }
        void close() override { host_.panels.at(number_)->close(); }

      private:
        SimulatedPanelHost& host_;
        platform::WindowNumber number_;
    };

    class Toast final : public platform::ToastWindow {
      public:
        Toast(SimulatedPanelHost& host, std::int64_t number) : host_(host), number_{number} {}
        ~Toast() override { host_.toasts.erase(number_); }
        [[nodiscard]] platform::WindowNumber number() const override { return number_; }
        [[nodiscard]] platform::Size fittingSize() const override { return {200, 36}; }
        void setFrameOrigin(platform::Point origin) override { host_.toasts.at(number_)->origin = origin; }
        void orderFrontRegardless() override { host_.toasts.at(number_)->visible = true; }

      private:
        SimulatedPanelHost& host_;
        platform::WindowNumber number_;
    };

    std::int64_t last_ = 1000;
};

}  // namespace orvellos
