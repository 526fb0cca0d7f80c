#pragma once

#include "platform/freedesktop/desktops/DesktopShortcuts.h"
#include "platform/freedesktop/desktops/SpaceKeys.h"
#include "platform/freedesktop/processes/PosixBackgroundProcesses.h"
#include "platform/x11/input/RawInput.h"
#include "platform/x11/input/X11HotKeys.h"
#include "platform/x11/input/X11KeyMonitor.h"
#include "platform/x11/input/X11Keyboard.h"
#include "ui/shell/QtRunLoop.h"
#include "ui/status/MenuInput.h"

namespace programs {

// All that has to do with the user's keys: what they are called, who sees them, and who has taken them.
class KeyboardServices final : platform::freedesktop::KeySpelling {
  public:
    KeyboardServices(platform::freedesktop::MessageBus& bus, ui::QtRunLoop& runLoop,
                     platform::x11::XConnection& connection, platform::x11::XEvents& events);
    KeyboardServices(const KeyboardServices&) = delete;
    KeyboardServices& operator=(const KeyboardServices&) = delete;

    [[nodiscard]] platform::x11::RawInput& rawInput() { return rawInput_; }
    [[nodiscard]] const platform::KeyNames& names() const { return names_; }
    [[nodiscard]] platform::KeyMonitor& monitor() { return monitor_; }
    [[nodiscard]] platform::freedesktop::SpaceKeys& spaceKeys() { return spaceKeys_; }
    [[nodiscard]] platform::HotKeyService& hotKeys() { return hotKeys_; }
    [[nodiscard]] platform::SystemShortcuts& systemShortcuts() { return systemShortcuts_; }

  private:
    [[nodiscard]] std::optional<std::uint32_t> qtKey(const platform::KeyEvent& keys) const override;
    [[nodiscard]] bool isAccelerator(const std::string& accelerator,
                                     const platform::KeyEvent& keys) const override;

    platform::x11::RawInput rawInput_;
    platform::x11::X11Keyboard keyboard_;
    platform::x11::X11KeyNames names_;
    platform::x11::X11KeyMonitor monitor_;
    platform::x11::X11HotKeys hotKeys_;
    ui::MenuKeys menuKeys_;
    platform::freedesktop::PosixBackgroundProcesses programs_;
    platform::freedesktop::DesktopAccelerators accelerators_;
    platform::freedesktop::DesktopShortcuts systemShortcuts_;
    platform::freedesktop::SpaceKeys spaceKeys_;
};

}  // namespace programs
