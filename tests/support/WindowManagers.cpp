#include "tests/support/WindowManagers.h"

#include <fmt/format.h>

#include <array>

#include "tests/support/TemporaryFolder.h"

namespace desktop_test {

namespace {

// Focus by click, window moves by the title bar and resizing by the bottom; no pop-up that would show in a
// picture.
std::string openboxConfiguration(int desktops) {
    return fmt::format(R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <desktops><number>{}</number><firstdesk>1</firstdesk><popupTime>0</popupTime></desktops>
  <resize><popupShow>Never</popupShow></resize>
  <theme><name>Clearlooks</name></theme>
  <mouse>
    <context name="Titlebar">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Left" action="Drag"><action name="Move"/></mousebind>
    </context>
    <context name="Bottom">
      <mousebind button="Left" action="Drag"><action name="Resize"/></mousebind>
    </context>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
)",
                       desktops);
}

std::string xfwm4Configuration(int desktops) {
    return fmt::format(R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfwm4" version="1.0">
  <property name="general" type="empty">
    <property name="workspace_count" type="int" value="{}"/>
  </property>
</channel>
)",
                       desktops);
}

std::string kwinConfiguration(const WindowManagerOptions& options) {
    auto text = fmt::format("[Desktops]\nNumber={}\nRows=1\n", options.desktops);
    for (int i = 1; i <= options.desktops; ++i) {
        const auto given = static_cast<std::size_t>(i) <= options.desktopIds.size();
        const auto id = given ? options.desktopIds[static_cast<std::size_t>(i - 1)]
                              : fmt::format("00000000-0000-4000-8000-{:012}", i);
        text += fmt::format("Id_{0}={1}\nName_{0}=Desktop {0}\n", i, id);
    }
    return text;
}

}  // namespace

std::string nameOf(WindowManager kind) {
    constexpr std::array kNames{"None", "Openbox", "Xfwm4", "Kwin"};
    return kNames.at(static_cast<std::size_t>(kind));
}

bool needsSessionBus(WindowManager kind) {
    return kind == WindowManager::Xfwm4 || kind == WindowManager::Kwin;
}

void writeConfiguration(const WindowManagerOptions& options, const std::filesystem::path& configFolder) {
    writeFile(configFolder / "openbox.xml", openboxConfiguration(options.desktops));
    writeFile(configFolder / "xfce4/xfconf/xfce-perchannel-xml/xfwm4.xml",
              xfwm4Configuration(options.desktops));
    writeFile(configFolder / "kwinrc", kwinConfiguration(options));
    writeFile(configFolder / "kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
}

WindowManagerLaunch launchOf(const WindowManagerOptions& options, const std::filesystem::path& configFolder,
                             bool replacing) {
    WindowManagerLaunch launch;
    switch (options.kind) {
        case WindowManager::None:
            return launch;
        case WindowManager::Openbox:
            launch.command = {"openbox", "--sm-disable", "--config-file", configFolder / "openbox.xml"};
            break;
        case WindowManager::Xfwm4:
            launch.command = {"xfwm4", options.composited ? "--compositor=on" : "--compositor=off"};
            break;
        case WindowManager::Kwin:
            launch.command = {"kwin_x11"};
            launch.environment["KWIN_COMPOSE"] = options.composited ? "O2" : "N";
            break;
    }
    if (replacing) launch.command.emplace_back("--replace");
    return launch;
}

}  // namespace desktop_test
