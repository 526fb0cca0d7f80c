#include "orvellos/panels/WelcomeForm.h"

#include <utility>

namespace orvellos {

WelcomeForm::WelcomeForm(Mode mode, Services services)
    : mode_(mode),
      services_(std::move(services)),
      permissionRows_{
          inputMonitoringRow(services_.permissions,
                             "Detect F3 / ⌃↑ before Mission Control snapshots your Spaces.", "Request"),
          accessibilityRow(services_.permissions, "Click a tag to jump Spaces — sends ⌃← / ⌃→ for you.",
                           "Request")} {
    auto& state = *services_.permissions.state;
    for (auto* granted : {&state.inputMonitoringTrusted, &state.accessibilityTrusted})
        grants_.push_back(granted->subscribe([this](bool) { changed_.notify(); }));
}

std::string_view WelcomeForm::title() const {
    return mode_ == Mode::FirstRun ? "Welcome to orvellos" : "What’s new in orvellos";
}

std::string_view WelcomeForm::subtitle() const {
    return mode_ == Mode::FirstRun ? "Floating labels for your macOS Spaces."
                                   : "A few things you may not have seen yet.";
}

void WelcomeForm::continueToPermissions() {
    step_ = Step::Permissions;
    services_.permissions.state->refresh();
    services_.permissions.state->startRefreshing();
}

void WelcomeForm::back() {
    step_ = Step::Features;
    services_.permissions.state->stopRefreshing();
}

void WelcomeForm::finish() {
    services_.settings.hasSeenWelcome.set(true);
    services_.settings.lastWelcomeVersion.set(kCurrentWelcomeVersion);
    services_.close();
}

void WelcomeForm::tagMyFirstSpace() {
    finish();
    services_.tagFirstSpace();
}

}  // namespace orvellos
