#include "orvellos/panels/PanelController.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "orvellos/base/DebugLog.h"
#include "orvellos/tags/TagColor.h"

namespace orvellos {

namespace {

using platform::PanelShell;
using platform::WindowNumber;

// What sets one kind of panel apart from the others.
struct PanelTraits {
    PanelShell shell;
    bool autoDismisses = false;
    const char* editingSource = nullptr;  // while it is open, every tag shows
};

PanelTraits traitsOf(PanelKind kind) {
    switch (kind) {
        case PanelKind::CreateTag:
            return {.shell = {.title = "Tag This Space",
                              .contentSize = {380, 280},
                              .isMovableByBackground = true},
                    .autoDismisses = true};
        case PanelKind::EditTags:
            return {.shell = {.title = "Edit Tag",
                              .contentSize = {460, 0},
                              .isResizable = true,
                              .isMovableByBackground = true},
                    .autoDismisses = true,
                    .editingSource = "edit-tags"};
        case PanelKind::Settings:
            return {.shell = {.title = "orvellos Settings",
                              .contentSize = {460, 640},
                              .isResizable = true,
                              .isMovableByBackground = true},
                    .autoDismisses = true,
                    .editingSource = "settings"};
        case PanelKind::About:
            return {.shell = {.title = "About orvellos", .contentSize = {320, 360}}};
        case PanelKind::Welcome:
            return {.shell = {.title = "Welcome to orvellos",
                              .contentSize = {480, 0},
                              .isMovableByBackground = true}};
        case PanelKind::QuickSwitcher:
            return {.shell = {.title = "Jump to Space", .contentSize = {460, 360}}, .autoDismisses = true};
    }
    return {};
}

}  // namespace

bool PanelController::isVisible(PanelKind kind) const {
    return panel(kind) && panel(kind)->window->isVisible();
}

void PanelController::close(PanelKind kind) {
    if (panel(kind)) panel(kind)->window->close();
}

// A form that is open already is for the Space the user is on now.
void PanelController::showCreatePanel(const std::optional<std::string>& spaceUUID) {
    spaceOfNewTag_ = spaceUUID;
    show(PanelKind::CreateTag);
}

void PanelController::showWelcome(WelcomeForm::Mode mode) {
    welcomeMode_ = mode;
    show(PanelKind::Welcome);
}

void PanelController::showQuickSwitcher() {
    if (const auto& open = panel(PanelKind::QuickSwitcher))
        std::get<QuickSwitcher>(open->model).showAgain(spaceRows());
    show(PanelKind::QuickSwitcher);
}

void PanelController::toggleCreatePanel(const std::optional<std::string>& spaceUUID) {
    if (isVisible(PanelKind::CreateTag))
        close(PanelKind::CreateTag);
    else
        showCreatePanel(spaceUUID);
}

void PanelController::showEditPanel() {
    show(PanelKind::EditTags);
}

void PanelController::toggleEditPanel() {
    const bool visible = isVisible(PanelKind::EditTags);
    log(LogCategory::Nav, fmt::format("toggleEditPanel: editPanel={} visible={}",
                                      panel(PanelKind::EditTags) ? "set" : "nil", visible));
    log(LogCategory::Nav, visible ? "  → close" : "  → present");
    if (visible)
        close(PanelKind::EditTags);
    else
        showEditPanel();
}

void PanelController::bringToFront() {
    if (open_.empty()) return showEditPanel();
    for (const auto kind : std::vector(open_)) show(kind);
}

void PanelController::show(PanelKind kind) {
    if (!panel(kind)) {
        panel(kind) = std::make_unique<Panel>(*this, kind);
        if (const auto* source = traitsOf(kind).editingSource) services_.editingContext.begin(source);
    }
    std::erase(open_, kind);
    open_.push_back(kind);
    panel(kind)->window->makeKeyAndOrderFront();
}

PanelController::Panel::Panel(PanelController& controller, PanelKind kind)
    : model(controller.makeModel(kind)),
      window(controller.services_.host.makePanel(
          traitsOf(kind).shell, std::visit([](auto& each) -> PanelContent { return &each; }, model),
          [&controller, kind] { controller.forget(kind); })) {
    const auto traits = traitsOf(kind);
    if (traits.autoDismisses)
        autoDismiss = std::make_unique<AutoDismiss>(controller.surroundingsOf(kind), traits.shell.title,
                                                    [&controller, kind] { controller.close(kind); });
}

PanelController::Model PanelController::makeModel(PanelKind kind) {
    switch (kind) {
        case PanelKind::CreateTag:
            return makeCreateForm();
        case PanelKind::EditTags:
            return makeEditList();
        case PanelKind::Settings:
            return makeSettings();
        case PanelKind::Welcome:
            return makeWelcome();
        case PanelKind::QuickSwitcher:
            return makeQuickSwitcher();
        case PanelKind::About:
            break;
    }
    return Model(std::in_place_type<About>, services_.about());
}

PanelController::Model PanelController::makeCreateForm() {
    return Model(
        std::in_place_type<CreateTagForm>, randomPaletteColor(),
        [this](const std::string& label, const std::string& colorHex) { createTag(label, colorHex); },
        [this] { close(PanelKind::CreateTag); });
}

PanelController::Model PanelController::makeEditList() {
    return Model(std::in_place_type<EditTagsList>, services_.manager, services_.spaces,
                 [this] { showSettingsPanel(); });
}

PanelController::Model PanelController::makeQuickSwitcher() {
    auto& manager = services_.manager;
    const auto navigate = [&manager](const MenuSpaceRow& row) {
        auto& navigation = manager.navigation();
        if (row.tag)
            navigation.navigateToTagID(row.tag->id);
        else
            navigation.navigateToSpace(row.spaceUUID);
    };
    return Model(std::in_place_type<QuickSwitcher>, spaceRows(), navigate,
                 [this] { close(PanelKind::QuickSwitcher); });
}

PanelController::Model PanelController::makeSettings() {
    auto& manager = services_.manager;
    return Model(std::in_place_type<SettingsForm>,
                 SettingsForm::Services{services_.settings, services_.recorder, permissionTargets(),
                                        [&manager] { return manager.navigation().areShortcutsEnabled(); }});
}

PanelController::Model PanelController::makeWelcome() {
    return Model(std::in_place_type<WelcomeForm>, welcomeMode_,
                 WelcomeForm::Services{
                     services_.settings, permissionTargets(), [this] { close(PanelKind::Welcome); },
                     [this] { showCreatePanel(services_.spaces.currentSpaceUUIDOnPointerDisplay()); }});
}

std::vector<MenuSpaceRow> PanelController::spaceRows() {
    return services_.manager.menuRows(
        [this] { return services_.spaces.orderedSpaceUUIDsOnPointerDisplay(); });
}

// Every view of the permissions has a state of its own.
PermissionTargets PanelController::permissionTargets() {
    auto& manager = services_.manager;
    const auto reload = [&manager] { manager.reloadKeystrokeObserver(); };
    return {services_.permissions,
            std::make_shared<PermissionsState>(services_.permissions, services_.runLoop, reload), reload};
}

void PanelController::createTag(const std::string& label, const std::string& colorHex) {
    const auto space = spaceOfNewTag_;
    close(PanelKind::CreateTag);
    services_.manager.createTag(label, colorHex, space);
}

std::string PanelController::randomPaletteColor() {
    std::uniform_int_distribution<std::size_t> pick(0, tagPalette.size() - 1);
    return std::string(tagPalette.at(pick(random_)).hex);
}

AutoDismiss::Surroundings PanelController::surroundingsOf(PanelKind kind) {
    return {services_.mouse, services_.runLoop, [this] { return services_.host.isColorPanelVisible(); },
            [this, kind](WindowNumber window) { return identify(kind, window); }};
}

AutoDismiss::ClickedWindow PanelController::identify(PanelKind kind, WindowNumber window) const {
    using Kind = AutoDismiss::WindowKind;
    for (std::size_t i = 0; i < panels_.size(); ++i) {
        const auto& panel = panels_[i];
        if (!panel || panel->window->number() != window) continue;
        const auto clicked = static_cast<PanelKind>(i);
        return {clicked == kind ? Kind::ThisPanel : Kind::SiblingPanel, traitsOf(clicked).shell.title};
    }
    if (services_.manager.isTagWindow(window)) return {Kind::TagWindow, ""};
    return {services_.host.isPanel(window) ? Kind::SiblingPanel : Kind::Other, std::nullopt};
}

// A part of the panel may be what closes it.
void PanelController::forget(PanelKind kind) {
    if (!panel(kind)) return;
    std::erase(open_, kind);
    panel(kind)->autoDismiss.reset();
    closed_.add(std::exchange(panel(kind), nullptr));
    if (const auto* source = traitsOf(kind).editingSource) services_.editingContext.end(source);
}

}  // namespace orvellos
