#include "tests/support/InputDevices.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <cstdint>

#include "tests/support/Wait.h"

namespace desktop_test {

void InputDevices::fake(std::uint8_t type, std::uint8_t detail, int x, int y) {
    xcb_test_fake_input(client_.connection(), type, detail, XCB_CURRENT_TIME, client_.root(),
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    client_.synchronize();
}

void InputDevices::movePointer(int x, int y) {
    fake(XCB_MOTION_NOTIFY, 0, x, y);
}

bool InputDevices::isHeld(xcb_button_t button) const {
    const auto cookie = xcb_query_pointer(client_.connection(), client_.root());
    const Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(client_.connection(), cookie, nullptr));
    return reply && (reply->mask & (XCB_BUTTON_MASK_1 << (button - 1U))) != 0;
}

void InputDevices::pressButton(xcb_button_t button) {
    fake(XCB_BUTTON_PRESS, button);
    // The server tells of the first five buttons.
    if (button <= 5) (void)waitUntil([&] { return isHeld(button); });
}

void InputDevices::releaseButton(xcb_button_t button) {
    fake(XCB_BUTTON_RELEASE, button);
    if (button <= 5) (void)waitUntil([&] { return !isHeld(button); });
}

void InputDevices::click(int x, int y, xcb_button_t button) {
    movePointer(x, y);
    pressButton(button);
    releaseButton(button);
}

void InputDevices::drag(int fromX, int fromY, int toX, int toY, int steps) {
    movePointer(fromX, fromY);
    pressButton(XCB_BUTTON_INDEX_1);
    for (int step = 1; step <= steps; ++step)
        movePointer(fromX + (toX - fromX) * step / steps, fromY + (toY - fromY) * step / steps);
    releaseButton(XCB_BUTTON_INDEX_1);
}

void InputDevices::typeKeys(std::initializer_list<xcb_keycode_t> keys) {
    for (const auto key : keys) pressKey(key);
    for (const auto* key = keys.end(); key != keys.begin();) releaseKey(*--key);
}

xcb_keycode_t InputDevices::keyFor(xcb_keysym_t symbol) const {
    const auto* setup = xcb_get_setup(client_.connection());
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto cookie = xcb_get_keyboard_mapping(client_.connection(), setup->min_keycode, count);
    const Reply<xcb_get_keyboard_mapping_reply_t> reply(
        xcb_get_keyboard_mapping_reply(client_.connection(), cookie, nullptr));
    if (!reply) return 0;
    const auto* symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    const auto* end = symbols + xcb_get_keyboard_mapping_keysyms_length(reply.get());
    const auto* found = std::find(symbols, end, symbol);
    if (found == end) return 0;
    return static_cast<xcb_keycode_t>(setup->min_keycode + (found - symbols) / reply->keysyms_per_keycode);
}

}  // namespace desktop_test
