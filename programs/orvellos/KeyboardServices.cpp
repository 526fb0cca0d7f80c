#include "programs/orvellos/KeyboardServices.h"

#include <QGuiApplication>

#include "platform/freedesktop/desktops/CurrentDesktop.h"
#include "platform/freedesktop/processes/Programs.h"
#include "platform/x11/input/KeyShortcut.h"

namespace programs {

using platform::freedesktop::SpaceKey;

namespace {

std::vector<platform::x11::KeyShortcut> shortcutsOf(const SpaceKey& key) {
    // A modifier key does something when it comes up alone.
    if (key.accelerator == "Super_L" || key.accelerator == "Super_R") return platform::x11::superTaps();
    const auto shortcut = key.qtKey != 0 ? platform::x11::shortcutOfQtKey(key.qtKey)
                                         : platform::x11::shortcutOfAccelerator(key.accelerator);
    return shortcut ? std::vector{*shortcut} : std::vector<platform::x11::KeyShortcut>();
}

std::vector<platform::x11::TranslatedShortcut> translated(const std::vector<SpaceKey>& keys) {
    std::vector<platform::x11::TranslatedShortcut> shortcuts;
    for (const auto& key : keys)
        for (const auto& shortcut : shortcutsOf(key)) shortcuts.push_back({shortcut, key.meaning});
    return shortcuts;
}

}  // namespace

KeyboardServices::KeyboardServices(platform::freedesktop::SessionBus& bus, ui::QtRunLoop& runLoop,
                                   platform::x11::XConnection& connection, platform::x11::XEvents& events)
    : rawInput_(connection, events),
      keyboard_(connection, events, runLoop),
      names_(keyboard_),
      monitor_(rawInput_, keyboard_, runLoop, [] { return QGuiApplication::focusWindow() != nullptr; }),
      hotKeys_(connection, events, rawInput_, keyboard_),
      menuKeys_(hotKeys_),
      programs_(runLoop,
                [](const std::string& name) {
                    return platform::freedesktop::findProgram(name).value_or(name).string();
                }),
      accelerators_({.bus = bus,
                     .processes = programs_,
                     .runLoop = runLoop,
                     .desktops = platform::freedesktop::currentDesktops()}),
      systemShortcuts_(shortcutServices(bus)),
      spaceKeys_(bus, runLoop, accelerators_,
                 [this](const auto& keys) { monitor_.setShortcuts(translated(keys)); }) {}

platform::freedesktop::DesktopShortcuts::Services KeyboardServices::shortcutServices(
    platform::freedesktop::SessionBus& bus) {
    return {.bus = bus,
            .accelerators = accelerators_,
            .qtKey =
                [this](const auto& keys) {
                    const auto pressed = platform::x11::shortcutOfKeys(keys, keyboard_);
                    return pressed ? platform::x11::qtKeyOf(*pressed) : std::nullopt;
                },
            .isAccelerator =
                [this](const auto& accelerator, const auto& keys) {
                    const auto pressed = platform::x11::shortcutOfKeys(keys, keyboard_);
                    return pressed && platform::x11::shortcutOfAccelerator(accelerator) == pressed;
                }};
}

}  // namespace programs
