#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "platform/RunLoop.h"

namespace platform::x11 {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
// A reply, event or error of the X library, which hands out memory of malloc.
template <typename T>
using Reply = std::unique_ptr<T, FreeDeleter>;

// Monotonic time, for programs without a main loop.
[[nodiscard]] Instant monotonicNow();

// A connection to an X server that never waits longer for answers than it was told to. Nothing throws: after
// a server went away every question has no answer, and one that a server does not answer in time has none
// either, which `isLate` tells apart. Waiting is counted by turns, so that a server that hangs is waited for
// once a turn and not once for every question.
class XConnection {
  public:
    // Connects to `displayName` (null: $DISPLAY); null when that fails. The X library waits without a bound
    // for a server that takes the connection and says nothing: a program that may not wait sets an alarm.
    // `patience` is how long the waits of a turn may last until setPatience changes it.
    [[nodiscard]] static std::unique_ptr<XConnection> open(const char* displayName, Duration patience);
    ~XConnection();
    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;

    [[nodiscard]] xcb_connection_t* get() const { return connection_; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
    [[nodiscard]] int screenNumber() const { return screenNumber_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] int descriptor() const { return xcb_get_file_descriptor(connection_); }
    [[nodiscard]] bool isBroken() const { return xcb_connection_has_error(connection_) != 0; }

    // The longest that all waits together may last from now on.
    void setDeadline(Instant deadline) { deadline_ = deadline; }
    // The longest that the waits of one turn together may last, from the next turn on.
    void setPatience(Duration patience) { patience_ = patience; }
    // Begins a turn. A program without a main loop has only one.
    void beginTurn();
    // Whether an answer of this turn has not come in time: a missing answer then does not mean absence.
    [[nodiscard]] bool isLate() const { return late_; }
    // Whether waiting has used up a good part of this turn's patience.
    [[nodiscard]] bool isTurnLong() const { return late_ || patienceLeft_ < patience_ / 2; }
    // Called after every wait for a reply: events may have been read into memory meanwhile.
    void setAfterWait(std::function<void()> action) { afterWait_ = std::move(action); }

    // The reply to a request made with `cookie`; null on an error, on a broken connection, or when time is
    // up.
    template <typename R, typename Cookie>
    [[nodiscard]] Reply<R> reply(Cookie cookie) {
        return Reply<R>(static_cast<R*>(waitForReply(cookie.sequence)));
    }
    [[nodiscard]] Reply<xcb_get_property_reply_t> reply(xcb_get_property_cookie_t cookie) {
        return reply<xcb_get_property_reply_t>(cookie);
    }
    // Gives up the reply to a request.
    template <typename Cookie>
    void discard(Cookie cookie) {
        xcb_discard_reply(connection_, cookie.sequence);
    }

    // The next event, waited for until `end` (and the deadline) at most; null when none has come.
    [[nodiscard]] Reply<xcb_generic_event_t> nextEvent(Instant end);

    void flush() { xcb_flush(connection_); }
    // Waits until the server has carried out every request. It may ignore requests made just before the
    // connection is closed.
    void synchronize();

  private:
    XConnection(xcb_connection_t* connection, int screenNumber, Duration patience);
    void* waitForReply(unsigned sequence);
    // Waits for bytes from the server; false when `end` has come first.
    [[nodiscard]] bool waitUntilReadable(Instant end) const;

    xcb_connection_t* connection_;
    const xcb_screen_t* screen_ = nullptr;
    int screenNumber_;
    Duration patience_;
    Duration patienceLeft_;  // in this turn
    bool late_ = false;
    std::optional<Instant> deadline_;
    std::function<void()> afterWait_;
};

// Asks for up to `longs` 32-bit units of a property.
[[nodiscard]] xcb_get_property_cookie_t requestProperty(const XConnection& connection, xcb_window_t window,
                                                        xcb_atom_t property, xcb_atom_t type,
                                                        std::uint32_t longs);
// Writes a property of 32-bit format.
void setProperty32(const XConnection& connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                   std::initializer_list<std::uint32_t> values);
// The values of a property of 32-bit format and the given type; empty for any other type or format, or no
// reply.
[[nodiscard]] std::span<const std::uint32_t> values32(const xcb_get_property_reply_t* reply, xcb_atom_t type);
// The first value; absent when there is none.
[[nodiscard]] std::optional<std::uint32_t> value32(const xcb_get_property_reply_t* reply, xcb_atom_t type);
// The bytes of a property of 8-bit format, whatever its type.
[[nodiscard]] std::string_view text8(const xcb_get_property_reply_t* reply);
// EWMH's source indications. A window manager may take an application's request about its own window for a
// call for attention; a pager's request is the user's.
inline constexpr std::uint32_t kSourceApplication = 1;
inline constexpr std::uint32_t kSourcePager = 2;
// Sends the window manager a client message of 32-bit format about `window`, as EWMH asks (to the root
// window).
void sendRootMessage(const XConnection& connection, xcb_window_t window, xcb_atom_t type,
                     std::span<const std::uint32_t> data);

}  // namespace platform::x11
