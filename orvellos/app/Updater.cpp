#include "orvellos/app/Updater.h"

#include <fmt/format.h>

#include <string>
#include <utility>

#include "orvellos/base/ApplicationVersion.h"
#include "orvellos/base/DebugLog.h"

namespace orvellos {

namespace {

constexpr const char* kChecking = "Checking for updates…";
constexpr const char* kMessage = "Couldn’t start the updater";
constexpr const char* kExplanation =
    "orvellos can’t check for updates from where it’s running now. Make sure orvellos is in your "
    "Applications folder (not the disk image or Downloads folder), then quit and reopen it.";

}  // namespace

Updater::Updater(platform::UpdateService& service, platform::Alerts& alerts, WaitingNote& note)
    : service_(service), alerts_(alerts), note_(note) {
    start();
}

void Updater::start() {
    isStarting_ = true;
    service_.startUpdater([this](const auto& error) {
        isStarting_ = false;
        lastStartError_ = error;
        if (error && debugEchoEnabled())
            log(LogCategory::General,
                "Updater failed to start (suppressed at launch): " + error->description);
        if (std::exchange(isAskedFor_, false)) finishCheck();
    });
}

// The check waits for a start that is under way; a start that failed is tried again first.
void Updater::checkForUpdates() {
    note_.show(kChecking);
    if (!isStarting_ && !lastStartError_) return finishCheck();
    isAskedFor_ = true;
    if (!isStarting_) start();
}

void Updater::finishCheck() {
    if (!lastStartError_) return service_.checkForUpdates([this](const auto& answer) { tell(answer); });
    note_.dismiss();
    alerts_.runModal(
        {.message = kMessage,
         .informativeText = std::string(kExplanation) + "\n\n(" + lastStartError_->description + ")",
         .buttons = {"OK"}},
        [](auto) {});
}

void Updater::tell(const platform::UpdateAnswer& answer) {
    using enum platform::Alert::Style;
    note_.dismiss();
    platform::Alert alert{"orvellos is up to date", "", {"OK"}, Informational};
    if (answer.error) {
        alert.style = Warning;
        alert.message = "Couldn’t check for updates";
        alert.informativeText = answer.error->description;
    } else if (answer.newVersion) {
        alert.message = fmt::format("orvellos {} is available", *answer.newVersion);
        alert.informativeText =
            fmt::format("You have {}. Your system’s software updater installs it.", applicationVersionText());
    } else {
        alert.informativeText = fmt::format(
            "You have {}, and your system’s package manager knows no newer one.", applicationVersionText());
    }
    alerts_.runModal(alert, [](auto) {});
}

}  // namespace orvellos
