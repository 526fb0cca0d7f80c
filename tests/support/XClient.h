#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace desktop_test {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
// An X reply, event or error, freed with its owner.
template <typename T>
using Reply = std::unique_ptr<T, FreeReply>;

// The event's number, without the mark of an event that a client has sent.
[[nodiscard]] inline std::uint8_t typeOf(const xcb_generic_event_t& event) {
    return event.response_type & 0x7F;
}

// A rectangle in pixels, origin at the top left.
struct Rectangle {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Rectangle&) const = default;
};

enum class MapState { Unmapped, Unviewable, Viewable };
enum class ShapeKind : std::uint8_t { Bounding = 0, Clip = 1, Input = 2 };

// A desktop number that means every desktop.
inline constexpr std::uint32_t kEveryDesktop = 0xFFFFFFFF;

// A connection of the test's own to an X server: reads what windows and the root say, asks the window manager
// for things, all synchronously. A window that is gone, or a server that is, gives absent or empty answers.
class XClient {
  public:
    // Throws std::runtime_error when the display cannot be reached.
    explicit XClient(const std::string& display);

    [[nodiscard]] xcb_connection_t* connection() const { return connection_.get(); }
    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] bool isAlive() const { return xcb_connection_has_error(connection_.get()) == 0; }
    [[nodiscard]] xcb_atom_t atom(const std::string& name);
    [[nodiscard]] std::string atomName(xcb_atom_t atom) const;

    // Properties. Absent when the property is not there, is of another format, or the window is gone.
    [[nodiscard]] std::optional<std::vector<std::uint32_t>> cardinals(xcb_window_t window,
                                                                      const std::string& property);
    [[nodiscard]] std::optional<std::uint32_t> cardinal(xcb_window_t window, const std::string& property);
    // The bytes, unconverted, of a UTF8_STRING or STRING.
    [[nodiscard]] std::optional<std::string> text(xcb_window_t window, const std::string& property);
    // The names of the atoms in a list such as _NET_WM_STATE; empty without the property.
    [[nodiscard]] std::vector<std::string> atoms(xcb_window_t window, const std::string& property);
    void setCardinals(xcb_window_t window, const std::string& property,
                      std::span<const std::uint32_t> values);
    void removeProperty(xcb_window_t window, const std::string& property);

    // The window manager's properties of the root window.
    [[nodiscard]] bool hasWindowManager();
    [[nodiscard]] std::optional<std::uint32_t> numberOfDesktops();
    [[nodiscard]] std::optional<std::uint32_t> currentDesktop();
    [[nodiscard]] std::optional<std::uint32_t> desktopOf(xcb_window_t window);
    [[nodiscard]] std::optional<xcb_window_t> activeWindow();
    [[nodiscard]] std::vector<xcb_window_t> clients();
    // Bottom to top.
    [[nodiscard]] std::vector<xcb_window_t> stackedClients();
    [[nodiscard]] bool hasCompositor();

    // Asks the window manager by a client message; what comes of it shows later.
    void sendToRoot(xcb_window_t window, const std::string& message, std::span<const std::uint32_t> data);
    void switchToDesktop(std::uint32_t desktop);
    void setNumberOfDesktops(std::uint32_t count);
    void moveToDesktop(xcb_window_t window, std::uint32_t desktop);

    // All windows, of any program, managed and mapped or not.
    [[nodiscard]] std::vector<xcb_window_t> allWindows();
    [[nodiscard]] std::optional<xcb_window_t> findByTitle(const std::string& title);
    [[nodiscard]] std::vector<xcb_window_t> findByPid(std::uint32_t pid);
    // The window's ancestor below the root: its frame, or itself when it has none.
    [[nodiscard]] xcb_window_t frameOf(xcb_window_t window);
    [[nodiscard]] MapState mapState(xcb_window_t window);
    // Without its frame, in root coordinates.
    [[nodiscard]] std::optional<Rectangle> geometry(xcb_window_t window);
    // In the window's own coordinates; the whole window when it has no shape, empty for an empty one.
    [[nodiscard]] std::vector<Rectangle> shape(xcb_window_t window, ShapeKind kind);
    [[nodiscard]] xcb_window_t inputFocus();
    // Whether nobody has grabbed the pointer.
    [[nodiscard]] bool isPointerFree();

    // Returns when the server has carried out everything asked so far.
    void synchronize();

  private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    [[nodiscard]] Reply<xcb_get_property_reply_t> property(xcb_window_t window, const std::string& name);

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    xcb_screen_t* screen_ = nullptr;
    std::map<std::string, xcb_atom_t> atoms_;
};

}  // namespace desktop_test
