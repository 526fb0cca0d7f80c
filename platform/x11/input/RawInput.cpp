#include "platform/x11/input/RawInput.h"

#include <tuple>

#include "platform/x11/connection/Extensions.h"

namespace platform::x11 {

RawInput::RawInput(XConnection& connection, XEvents& events) : connection_(connection) {
    const auto* extension = findExtension(connection_, xcb_input_id);
    if (!extension) return;
    const auto cookie = xcb_input_xi_query_version(connection_.get(), 2, 1);
    const auto version = connection_.reply<xcb_input_xi_query_version_reply_t>(cookie);
    if (!version || std::tie(version->major_version, version->minor_version) < std::tuple(2, 1)) return;
    opcode_ = extension->major_opcode;
    events_ = events.subscribe([this](const auto& event) { handle(event); });
}

void RawInput::select(std::uint32_t eventMask) {
    if (!isAvailable() || (eventMask & ~eventMask_) == 0) return;
    eventMask_ |= eventMask;
    // Master devices alone: the server reports a keyboard's events for its master again.
    const struct {
        xcb_input_event_mask_t header;
        std::uint32_t mask;
    } selection = {{XCB_INPUT_DEVICE_ALL_MASTER, 1}, eventMask_};
    xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &selection.header);
    connection_.flush();
}

void RawInput::handle(const xcb_generic_event_t& event) {
    if (XEvents::type(event) != XCB_GE_GENERIC) return;
    // The raw events of keys and buttons begin alike.
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    if (raw.extension == opcode_) handlers_.notify({raw.event_type, raw.detail, raw.time});
}

}  // namespace platform::x11
