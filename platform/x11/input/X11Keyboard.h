#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/Keys.h"
#include "platform/x11/connection/XEvents.h"

namespace platform::x11 {

// When a held key repeats.
struct KeyRepeat {
    Duration delay{};
    Duration interval{};
};

// Knows the server's keyboard without asking: which modifiers are in effect, how keys repeat and which
// symbols they give. The events of the X keyboard extension keep it up to date.
class X11Keyboard {
  public:
    // Waits for the server to describe its keyboard.
    X11Keyboard(XConnection& connection, XEvents& events, RunLoop& runLoop);

    // Whether the server tells about its keyboard; otherwise no modifier is ever seen.
    [[nodiscard]] bool isAvailable() const { return firstEvent_ != 0; }
    // The flags of platform::modifier, locked and latched ones included.
    [[nodiscard]] std::uint64_t modifierFlags() const { return modifierFlags_; }
    // Absent for a key that does not repeat.
    [[nodiscard]] std::optional<KeyRepeat> repeatOf(std::uint32_t xKeyCode) const;
    // The symbol that the key gives without modifiers in the layout that is in effect; 0 for none.
    [[nodiscard]] xcb_keysym_t symbolOf(std::uint32_t xKeyCode) const;
    // The X modifiers that Caps Lock, Num Lock and Scroll Lock switch on and off.
    [[nodiscard]] const std::vector<std::uint16_t>& lockModifiers() const { return lockModifiers_; }
    // Whether the key gives this symbol in the first or second group of the layout, with or without Shift.
    [[nodiscard]] bool gives(std::uint32_t xKeyCode, xcb_keysym_t symbol, bool withShift) const;

  private:
    void handle(const xcb_generic_event_t& event);
    void selectEvents();
    bool read();
    void readLocks(const xcb_get_modifier_mapping_reply_t& mapping);
    void readLater();
    // Absent where the key has no such column in the core protocol's list of symbols.
    [[nodiscard]] std::optional<xcb_keysym_t> symbolAt(std::uint32_t xKeyCode, std::size_t column) const;

    XConnection& connection_;
    RunLoop& runLoop_;
    std::uint8_t firstEvent_ = 0;
    std::uint64_t modifierFlags_ = 0;
    std::size_t group_ = 0;  // the layout in effect
    std::vector<std::uint16_t> lockModifiers_ = {XCB_MOD_MASK_LOCK};
    KeyRepeat repeat_;
    std::array<std::uint8_t, 32> repeatingKeys_{};  // a bit for each key code
    std::vector<xcb_keysym_t> symbols_;
    std::size_t symbolsPerKey_ = 0;
    Timer readTimer_;
    Subscription events_;
};

// The texts of the keys in the layout that is in effect.
class X11KeyNames final : public KeyNames {
  public:
    explicit X11KeyNames(const X11Keyboard& keyboard) : keyboard_(keyboard) {}

    [[nodiscard]] std::string textOf(std::uint16_t keyCode) const override;

  private:
    const X11Keyboard& keyboard_;
};

}  // namespace platform::x11
