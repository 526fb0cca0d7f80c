#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/Keys.h"
#include "platform/Menus.h"
#include "platform/Observers.h"
#include "platform/Panels.h"
#include "platform/System.h"

namespace platform::simulated {

// A mouse whose buttons a test presses.
class SimulatedMouse final : public MouseMonitor {
  public:
    Subscription addLocalMouseDownMonitor(std::function<void(WindowNumber)> handler) override {
        return local_.subscribe(std::move(handler));
    }
    Subscription addGlobalMouseDownMonitor(std::function<void()> handler) override {
        return global_.subscribe(std::move(handler));
    }
    void pressIn(WindowNumber window) { local_.notify(window); }
    void pressElsewhere() { global_.notify(); }

  private:
    Observers<WindowNumber> local_;
    Observers<> global_;
};

// A status item that a test reads and opens.
class SimulatedStatusItem final : public StatusItem {
  public:
    StatusTitle title;
    std::function<std::vector<MenuItem>()> openMenu;

    void setTitle(const StatusTitle& newTitle) override { title = newTitle; }
    void setMenu(std::function<std::vector<MenuItem>()> menuNeedsUpdate) override {
        openMenu = std::move(menuNeedsUpdate);
    }
};

// Updates that a test brings.
class SimulatedUpdates final : public UpdateService {
  public:
    int starts = 0;
    std::function<void(const MaybeError&)> started;  // waits for the test
    std::function<void(const UpdateAnswer&)> answered;

    void startUpdater(std::function<void(const MaybeError&)> told) override {
        ++starts;
        started = std::move(told);
    }
    void checkForUpdates(std::function<void(const UpdateAnswer&)> told) override {
        answered = std::move(told);
    }
};

class SimulatedMenuBar final : public MenuBar {
  public:
    std::vector<MainMenu> menus;
    void setMainMenu(std::vector<MainMenu> newMenus) override { menus = std::move(newMenus); }
    [[nodiscard]] bool isChosenBy(const KeyEquivalent& equivalent, std::string_view text,
                                  std::uint64_t modifierFlags) const override {
        return text == std::string_view(&equivalent.key, 1) && modifierFlags == equivalent.modifierFlags;
    }
};

// A system that lets its Spaces be switched by keys, as far as a test allows it.
class SimulatedShortcuts final : public SpaceShortcuts {
  public:
    bool canPost = true;
    std::map<int, bool> enabled;     // the system says nothing of the others
    std::vector<KeyEvent> pressed;   // keys that went down
    mutable std::vector<int> asked;  // numbers of shortcuts, in order

    [[nodiscard]] bool post(const KeyEvent& event, Direction direction) override {
        if (canPost && direction == Direction::Down) pressed.push_back(event);
        return canPost;
    }
    [[nodiscard]] std::optional<bool> isEnabled(int number) const override {
        asked.push_back(number);
        const auto found = enabled.find(number);
        return found == enabled.end() ? std::nullopt : std::optional(found->second);
    }
};

// Alerts that stay up until a test answers them.
class SimulatedAlerts final : public Alerts {
  public:
    std::vector<Alert> shown;

    void runModal(const Alert& alert, std::function<void(std::size_t)> answered) override {
        shown.push_back(alert);
        answered_ = std::move(answered);
    }
    // Answers the last one.
    void answer(std::size_t button) { std::exchange(answered_, nullptr)(button); }

  private:
    std::function<void(std::size_t)> answered_;
};

class SimulatedUrlOpener final : public UrlOpener {
  public:
    std::vector<std::string> opened;
    void openUrl(std::string_view url) override { opened.emplace_back(url); }
};

}  // namespace platform::simulated
