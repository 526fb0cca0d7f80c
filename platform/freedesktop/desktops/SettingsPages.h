#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/System.h"

namespace platform::freedesktop {

// Opens the settings program of the running desktop at the page that plays the part of the one asked for.
class SettingsPages final : public UrlOpener {
  public:
    using Command = std::vector<std::string>;
    using IsInstalled = std::function<bool(std::string_view program)>;
    using Start = std::function<void(const Command& command)>;

    // `desktops` are the running desktop's names, as currentDesktops() gives them.
    explicit SettingsPages(std::string desktops);
    SettingsPages(std::string desktops, IsInstalled isInstalled, Start start)
        : desktops_(std::move(desktops)), isInstalled_(std::move(isInstalled)), start_(std::move(start)) {}

    void openUrl(std::string_view url) override;

  private:
    std::string desktops_;
    IsInstalled isInstalled_;
    Start start_;
};

}  // namespace platform::freedesktop
