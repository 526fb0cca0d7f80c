#include "programs/orvellos/KeyboardServices.h"

#include <QGuiApplication>

#include "platform/freedesktop/desktops/CurrentDesktop.h"
#include "platform/freedesktop/processes/Programs.h"
#include "platform/x11/input/KeyChord.h"
#include "ui/widgets/QtKeys.h"

namespace programs {

using platform::freedesktop::SpaceKey;

namespace {

std::vector<platform::x11::KeyChord> chordsOf(const SpaceKey& key) {
    // A modifier key does something when it comes up alone.
    if (key.accelerator == "Super_L" || key.accelerator == "Super_R") return platform::x11::superTaps();
    const auto chord =
        key.qtKey != 0 ? ui::chordOfQtKey(key.qtKey) : platform::x11::chordOfAccelerator(key.accelerator);
    return chord ? std::vector{*chord} : std::vector<platform::x11::KeyChord>();
}

std::vector<platform::x11::TranslatedShortcut> translated(const std::vector<SpaceKey>& keys) {
    std::vector<platform::x11::TranslatedShortcut> shortcuts;
    for (const auto& key : keys)
        for (const auto& chord : chordsOf(key)) shortcuts.push_back({chord, key.meaning});
    return shortcuts;
}

}  // namespace

KeyboardServices::KeyboardServices(platform::freedesktop::MessageBus& bus, ui::QtRunLoop& runLoop,
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
      systemShortcuts_({.bus = bus, .accelerators = accelerators_, .spelling = *this}),
      spaceKeys_(bus, runLoop, accelerators_,
                 [this](const auto& keys) { monitor_.setShortcuts(translated(keys)); }) {}

std::optional<std::uint32_t> KeyboardServices::qtKey(const platform::KeyEvent& keys) const {
    const auto pressed = platform::x11::chordOfKeys(keys, keyboard_);
    return pressed ? ui::qtKeyOf(*pressed) : std::nullopt;
}

bool KeyboardServices::isAccelerator(const std::string& accelerator, const platform::KeyEvent& keys) const {
    const auto pressed = platform::x11::chordOfKeys(keys, keyboard_);
    return pressed && platform::x11::chordOfAccelerator(accelerator) == pressed;
}

}  // namespace programs
