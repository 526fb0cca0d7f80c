#include "platform/freedesktop/desktops/DesktopColorScheme.h"

#include <utility>

namespace platform::freedesktop {

namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kSettings = "org.freedesktop.portal.Settings";
constexpr const char* kNamespace = "org.freedesktop.appearance";
constexpr const char* kKey = "color-scheme";

}  // namespace

DesktopColorScheme::DesktopColorScheme(MessageBus& bus, std::function<void(Preference)> changed)
    : bus_(bus), changed_(std::move(changed)) {
    changes_ = bus_.subscribe({.sender = kPortal,
                               .path = kPath,
                               .interface = kSettings,
                               .member = "SettingChanged",
                               .firstArgument = kNamespace},
                              [this](const auto& arguments) {
                                  if (arguments.size() == 3 && arguments[1] == kKey) set(arguments[2]);
                              });
    connection_ = bus_.onConnectionChanged([this](bool connected) {
        if (connected) ask();
    });
}

// The portal is started for the question where it is installed, as it is for every program of the desktop.
void DesktopColorScheme::ask() {
    question_ = bus_.call({.service = kPortal,
                           .path = kPath,
                           .interface = kSettings,
                           .member = "Read",
                           .arguments = {std::string(kNamespace), std::string(kKey)},
                           .startsService = true,
                           .timeout = kLongestPatientCall},
                          [this](const auto& answer) {
                              if (answer && answer->size() == 1) set(answer->front());
                          });
}

// 1 prefers dark, 2 light; anything else says nothing.
void DesktopColorScheme::set(const nlohmann::json& value) {
    const auto preference = value == 1 ? Preference::Dark : value == 2 ? Preference::Light : Preference::None;
    if (std::exchange(preference_, preference) != preference) changed_(preference);
}

}  // namespace platform::freedesktop
