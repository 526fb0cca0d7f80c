#include "orvellos/panels/PanelController.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>
#include <variant>

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

// One panel: what it says and does, its window, and what dismisses it.
class PanelController::Panel final : public AutoDismiss::Owner {
  public:
    Panel(PanelController& controller, PanelKind kind);

    [[nodiscard]] platform::PanelWindow& window() const { return *window_; }
    [[nodiscard]] QuickSwitcher& quickSwitcher() { return std::get<QuickSwitcher>(model_); }
    void stopDismissing() { autoDismiss_.reset(); }

  private:
    // Made in its place.
    using Model = std::variant<CreateTagForm, EditTagsList, QuickSwitcher, SettingsForm, WelcomeForm, About>;
    [[nodiscard]] Model makeModel() const;
    [[nodiscard]] PermissionsState::Services permissions() const;

    [[nodiscard]] bool isColorPanelVisible() const override {
        return controller_.services_.host.isColorPanelVisible();
    }
    [[nodiscard]] AutoDismiss::ClickedWindow identify(WindowNumber window) const override;
    void dismiss() override { controller_.close(kind_); }

    PanelController& controller_;
    const PanelKind kind_;
    Model model_;
    std::unique_ptr<platform::PanelWindow> window_;
    std::unique_ptr<AutoDismiss> autoDismiss_;  // of the panels that have it
};

PanelController::Panel::Panel(PanelController& controller, PanelKind kind)
    : controller_(controller), kind_(kind), model_(makeModel()) {
    const auto& services = controller_.services_;
    const auto traits = traitsOf(kind_);
    window_ = services.host.makePanel(traits.shell,
                                      std::visit([](auto& model) -> PanelContent { return &model; }, model_),
                                      [this] { controller_.forget(kind_); });
    if (traits.autoDismisses)
        autoDismiss_ =
            std::make_unique<AutoDismiss>(services.mouse, services.runLoop, traits.shell.title, *this);
}

PanelController::Panel::Model PanelController::Panel::makeModel() const {
    const auto& services = controller_.services_;
    auto& manager = services.manager;
    switch (kind_) {
        case PanelKind::CreateTag:
            return Model(std::in_place_type<CreateTagForm>, controller_.randomPaletteColor(), controller_);
        case PanelKind::EditTags:
            return Model(std::in_place_type<EditTagsList>, manager, services.spaces,
                         [this] { controller_.showSettingsPanel(); });
        case PanelKind::Settings:
            return Model(std::in_place_type<SettingsForm>,
                         SettingsForm::Services{.settings = services.settings,
                                                .recorder = services.recorder,
                                                .permissions = permissions(),
                                                .areSpaceShortcutsEnabled = [&manager] {
                                                    return manager.areShortcutsEnabled();
                                                }});
        case PanelKind::Welcome:
            return Model(
                std::in_place_type<WelcomeForm>, controller_.welcomeMode_,
                WelcomeForm::Services{
                    .settings = services.settings, .permissions = permissions(), .owner = controller_});
        case PanelKind::QuickSwitcher:
            return Model(std::in_place_type<QuickSwitcher>, controller_.spaceRows(), controller_);
        case PanelKind::About:
            break;
    }
    return Model(std::in_place_type<About>, services.about());
}

PermissionsState::Services PanelController::Panel::permissions() const {
    const auto& services = controller_.services_;
    return {.permissions = services.permissions,
            .runLoop = services.runLoop,
            .reloadKeystrokeObserver = [&manager = services.manager] { manager.reloadKeystrokeObserver(); }};
}

AutoDismiss::ClickedWindow PanelController::Panel::identify(WindowNumber window) const {
    using Kind = AutoDismiss::WindowKind;
    for (const auto& panel : controller_.panels_) {
        if (!panel || panel->window().number() != window) continue;
        return {panel.get() == this ? Kind::ThisPanel : Kind::SiblingPanel,
                traitsOf(panel->kind_).shell.title};
    }
    const auto& services = controller_.services_;
    if (services.manager.isTagWindow(window)) return {Kind::TagWindow, ""};
    return {services.host.isPanel(window) ? Kind::SiblingPanel : Kind::Other, std::nullopt};
}

PanelController::PanelController(const Services& services) : services_(services), closed_(services.runLoop) {}

PanelController::~PanelController() = default;

bool PanelController::isVisible(PanelKind kind) const {
    return panel(kind) && panel(kind)->window().isVisible();
}

void PanelController::close(PanelKind kind) {
    if (panel(kind)) panel(kind)->window().close();
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
    if (const auto& open = panel(PanelKind::QuickSwitcher)) open->quickSwitcher().showAgain(spaceRows());
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
    panel(kind)->window().makeKeyAndOrderFront();
}

std::vector<MenuSpaceRow> PanelController::spaceRows() const {
    return services_.manager.menuRows(
        [this] { return services_.spaces.orderedSpaceUUIDsOnPointerDisplay(); });
}

void PanelController::navigate(const MenuSpaceRow& row) {
    if (row.tag)
        services_.manager.navigateToTagID(row.tag->id);
    else
        services_.manager.navigateToSpace(row.spaceUUID);
}

void PanelController::tagFirstSpace() {
    showCreatePanel(services_.spaces.currentSpaceUUIDOnPointerDisplay());
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

// A part of the panel may be what closes it.
void PanelController::forget(PanelKind kind) {
    if (!panel(kind)) return;
    std::erase(open_, kind);
    panel(kind)->stopDismissing();
    closed_.add(std::exchange(panel(kind), nullptr));
    if (const auto* source = traitsOf(kind).editingSource) services_.editingContext.end(source);
}

}  // namespace orvellos
