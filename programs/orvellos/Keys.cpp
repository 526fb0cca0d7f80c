#include "programs/orvellos/Keys.h"

#include <QApplication>

#include "platform/freedesktop/CurrentDesktop.h"
#include "platform/freedesktop/ProgramSearch.h"
#include "platform/x11/KeyAccelerators.h"

Keys::Keys(platform::freedesktop::SessionBus& bus, ui::QtRunLoop& runLoop,
           platform::x11::XConnection& connection, platform::x11::XEvents& events)
    : rawInput_(connection, events),
      keyboard_(connection, events, runLoop),
      names_(keyboard_),
      monitor_(rawInput_, keyboard_, runLoop, [] { return QGuiApplication::focusWindow() != nullptr; }),
      hotKeys_(connection, events, rawInput_, keyboard_,
               [] { return QApplication::activePopupWidget() != nullptr; }),
      programs_(runLoop,
                [](const std::string& name) {
                    return platform::freedesktop::findProgram(name).value_or(name).string();
                }),
      systemShortcuts_(shortcutServices(bus, runLoop)) {}

platform::freedesktop::DesktopShortcuts::Services Keys::shortcutServices(
    platform::freedesktop::SessionBus& bus, platform::RunLoop& runLoop) {
    return {bus,
            programs_,
            runLoop,
            platform::freedesktop::currentDesktops(),
            [this](const auto& keys) {
                const auto pressed = platform::x11::shortcutOfKeys(keys, keyboard_);
                return pressed ? platform::x11::qtKeyOf(*pressed) : std::nullopt;
            },
            [this](const auto& accelerator, const auto& keys) {
                const auto pressed = platform::x11::shortcutOfKeys(keys, keyboard_);
                return pressed && platform::x11::shortcutOfAccelerator(accelerator) == pressed;
            }};
}
