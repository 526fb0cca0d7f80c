#pragma once

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/RunLoop.h"
#include "platform/Screens.h"
#include "platform/linux/OverviewSource.h"
#include "platform/x11/connection/Atoms.h"
#include "platform/x11/connection/XEvents.h"

namespace platform::x11 {

// Knows when a program shows an overview of windows and desktops as a full-screen window, under any window
// manager. It looks at every window that appears, follows the windows of such programs from then on, and asks
// the server without waiting.
class OverviewPrograms final : public OverviewSource {
  public:
    // The names under which the programs are installed, which are also their windows' classes.
    [[nodiscard]] static std::span<const std::string_view> names();

    // Sees unmanaged windows only with `areInstalled`, because the server then has to tell of every window
    // that any program shows, moves or hides.
    OverviewPrograms(XConnection& connection, const Atoms& atoms, XEvents& events, RunLoop& runLoop,
                     Screens& screens, bool areInstalled);
    ~OverviewPrograms() override;
    OverviewPrograms(const OverviewPrograms&) = delete;
    OverviewPrograms& operator=(const OverviewPrograms&) = delete;

    [[nodiscard]] bool mayOpen() const override { return areInstalled_; }
    [[nodiscard]] bool isOverviewOpen() const override { return isOpen_; }

  private:
    struct PixelSize {
        std::uint32_t width = 0;
        std::uint32_t height = 0;
    };
    // Absent values are being asked for.
    struct Window {
        std::optional<bool> isMapped;
        std::optional<PixelSize> size;
    };
    // A question to the server, and what handles its answer: null for an error.
    struct Question {
        unsigned sequence;
        std::function<void(const void* reply)> handle;
    };

    void handle(const xcb_generic_event_t& event);
    void handleMapped(xcb_window_t window, bool isUnmanaged);
    [[nodiscard]] Window* find(xcb_window_t window);
    void ask(unsigned sequence, std::function<void(const void* reply)> handle);
    void collectAnswers();
    void collectLater(Duration delay);
    void readClients();
    void look(xcb_window_t window);
    void follow(xcb_window_t window);
    [[nodiscard]] bool fillsAScreen(const Window& window) const;
    void update();

    XConnection& connection_;
    const Atoms& atoms_;
    RunLoop& runLoop_;
    const Screens& screens_;
    const bool areInstalled_;
    std::vector<xcb_window_t> clients_;         // sorted
    std::map<xcb_window_t, Window> overviews_;  // the programs' windows
    std::vector<Question> questions_;           // oldest first
    bool readsClients_ = false;                 // the list of clients has been asked for
    bool readsClientsAgain_ = false;
    bool isOpen_ = false;
    Timer answersDue_;
    Subscription screensChanged_;
    Subscription subscription_;
};

}  // namespace platform::x11
