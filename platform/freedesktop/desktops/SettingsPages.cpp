#include "platform/freedesktop/desktops/SettingsPages.h"

#include <algorithm>
#include <array>

#include "platform/freedesktop/desktops/CurrentDesktop.h"
#include "platform/freedesktop/processes/Programs.h"
#include "platform/freedesktop/processes/Spawn.h"

namespace platform::freedesktop {

namespace {

constexpr std::string_view kKeyboard = "x-apple.systempreferences:com.apple.Keyboard-Settings.extension";
constexpr std::string_view kAccessibility =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";

// A desktop's page. What lets Spaces be switched is the window manager's business here, so that is where the
// accessibility page leads.
struct Page {
    std::string_view url;
    std::string_view desktop;
    std::string_view program;
    std::string_view argument;
};
constexpr std::array kPages = {Page{kKeyboard, "KDE", "systemsettings", "kcm_keys"},
                               Page{kKeyboard, "KDE", "systemsettings5", "kcm_keys"},
                               Page{kKeyboard, "GNOME", "gnome-control-center", "keyboard"},
                               Page{kKeyboard, "XFCE", "xfwm4-settings", ""},
                               Page{kKeyboard, "X-Cinnamon", "cinnamon-settings", "keyboard"},
                               Page{kKeyboard, "MATE", "mate-keybinding-properties", ""},
                               Page{kAccessibility, "KDE", "systemsettings", "kcm_kwin_virtualdesktops"},
                               Page{kAccessibility, "KDE", "systemsettings5", "kcm_kwin_virtualdesktops"},
                               Page{kAccessibility, "GNOME", "gnome-control-center", "multitasking"},
                               Page{kAccessibility, "XFCE", "xfwm4-workspace-settings", ""},
                               Page{kAccessibility, "X-Cinnamon", "cinnamon-settings", "workspaces"},
                               Page{kAccessibility, "MATE", "mate-window-properties", ""}};

}  // namespace

SettingsPages::SettingsPages(std::string desktops)
    : SettingsPages(std::move(desktops), isProgramInstalled, [](const Command& command) {
          (void)startDetached(command.front(), std::span(command).subspan(1));
      }) {}

void SettingsPages::openUrl(std::string_view url) {
    const auto page = std::ranges::find_if(kPages, [&](const Page& each) {
        return each.url == url && isAmongDesktops(each.desktop, desktops_) && isInstalled_(each.program);
    });
    if (page == kPages.end()) return;
    Command command = {std::string(page->program)};
    if (!page->argument.empty()) command.emplace_back(page->argument);
    start_(command);
}

}  // namespace platform::freedesktop
