#include "orvellos/panels/WelcomeForm.h"

#include <utility>

namespace orvellos {

WelcomeForm::WelcomeForm(Mode mode, Services services)
    : mode_(mode), services_(std::move(services)), permissionsState_(services_.permissions) {
    using enum PermissionRow::Permission;
    const auto add = [this](PermissionRow::Permission permission, std::string text) {
        permissionRows_.emplace_back(permission, PermissionRow::Texts{std::move(text), "Request"},
                                     services_.permissions.permissions, permissionsState_);
    };
    add(InputMonitoring, "Detect F3 / ⌃↑ before Mission Control snapshots your Spaces.");
    add(Accessibility, "Click a tag to jump Spaces — sends ⌃← / ⌃→ for you.");
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
    permissionsState_.refresh();
    permissionsState_.startRefreshing();
}

void WelcomeForm::back() {
    step_ = Step::Features;
    permissionsState_.stopRefreshing();
}

void WelcomeForm::finish() {
    services_.settings.hasSeenWelcome.set(true);
    services_.settings.lastWelcomeVersion.set(kCurrentWelcomeVersion);
    services_.owner.closeWelcome();
}

void WelcomeForm::tagMyFirstSpace() {
    auto& owner = services_.owner;
    finish();
    owner.tagFirstSpace();
}

}  // namespace orvellos
