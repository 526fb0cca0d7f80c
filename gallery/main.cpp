// Pictures of the panels, the menu, the toast and an alert, made without a screen from a desktop in memory:
// orvello-gallery FOLDER POINTS light|dark

#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <cstdio>
#include <stdexcept>

#include "orvellos/menu/StatusItemController.h"
#include "orvellos/settings/HotkeyNames.h"
#include "tests/support/PanelsTest.h"
#include "ui/panels/AlertBox.h"
#include "ui/panels/QtToast.h"
#include "ui/status/StatusButton.h"
#include "ui/status/StatusMenu.h"
#include "ui/widgets/Appearance.h"

namespace {

class Gallery final : public orvellos::PanelsTest, orvellos::ApplicationCommands {
  public:
    // Pictures go to the folder.
    Gallery(QString folder, double points, ui::ColorScheme scheme) : folder_(std::move(folder)) {
        auto font = QApplication::font();
        font.setPointSizeF(points);
        QApplication::setFont(font);
        ui::applyColorScheme(scheme);
        for (const auto* uuid : {"D", "E", "gone"}) desktop_.spaces.addSpace(uuid);
        desktop_.permissions.inputMonitoringTrusted = false;
        desktop_.shortcuts.enabled[81] = false;
        for (const auto& name : orvellos::hotkey::kAll) hotkeys_.create(name);
        setTags({});
        start();
    }

    void takeAll() {
        takeList("list-empty");
        fill();
        takeList("list");
        takeEditor();
        takeCreateForm();
        takeSettings();
        takeWelcome();
        takeAbout();
        takeQuickSwitcher();
        takeMenu();
        takeToastAndAlert();
    }

  private:
    void TestBody() override {}

    void fill() {
        manager_.createTag("Mail", "#3B82F6", "A");
        manager_.createTag("Code review", "#10B981", "B");
        manager_.createTag("Writing the quarterly report together", "#F59E0B", "D");
        manager_.createTag("Music 🎵", "#EF4444", "gone");
        desktop_.spaces.removeSpace("gone");
        desktop_.spaces.notifyActiveSpaceChanged();
        settle();
    }
    void takeList(const char* name) {
        panels_.showEditPanel();
        auto& list = panel("Edit Tag");
        press(Qt::Key_Tab, 2);
        take(list, name);
        panels_.close(orvellos::PanelKind::EditTags);
    }
    void takeEditor() {
        panels_.showEditPanel();
        panel("Edit Tag").findChildren<QToolButton*>(QStringLiteral("pencil")).at(1)->click();
        take(panel("Edit Tag"), "list-editor");
        panels_.close(orvellos::PanelKind::EditTags);
    }
    void takeCreateForm() {
        panels_.showCreatePanel("C");
        auto& form = panel("Tag This Space");
        take(form, "create");
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Home"));
        press(Qt::Key_Tab);
        take(form, "create-color");
        press(Qt::Key_Tab);
        take(form, "create-cancel");
        for (auto* swatch : form.findChildren<QRadioButton*>())
            if (swatch->accessibleName() == QLatin1String("Custom color")) swatch->click();
        take(panel("Colors"), "colors");
        panels_.close(orvellos::PanelKind::CreateTag);
    }
    void takeSettings() {
        panels_.showSettingsPanel();
        auto& settings = panel("orvellos Settings");
        press(Qt::Key_Tab);
        take(settings, "settings-top");
        press(Qt::Key_Tab, 2);
        take(settings, "settings-switch");
        auto* bar = settings.findChild<QScrollArea*>()->verticalScrollBar();
        bar->setValue(bar->maximum() * 2 / 3);
        take(settings, "settings-shortcuts");
        bar->setValue(bar->maximum());
        take(settings, "settings-bottom");
        settings.resize(settings.minimumSize());
        take(settings, "settings-least");
        panels_.close(orvellos::PanelKind::Settings);
    }
    void takeWelcome() {
        panels_.showWelcome(orvellos::WelcomeForm::Mode::FirstRun);
        take(panel("Welcome to orvellos"), "welcome-1");
        press(Qt::Key_Return);
        take(panel("Welcome to orvellos"), "welcome-2");
        panels_.close(orvellos::PanelKind::Welcome);
    }
    void takeAbout() {
        panels_.showAbout();
        take(panel("About orvellos"), "about");
        panels_.close(orvellos::PanelKind::About);
    }
    void takeQuickSwitcher() {
        panels_.showQuickSwitcher();
        auto& switcher = panel("Jump to Space");
        take(switcher, "switcher");
        press(Qt::Key_Down);
        take(switcher, "switcher-second");
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("nowhere"));
        take(switcher, "switcher-none");
        panels_.close(orvellos::PanelKind::QuickSwitcher);
    }
    void takeMenu() {
        settings_.visibilityMode.set(orvellos::TagVisibilityMode::HiddenDuringWork);
        ui::StatusMenu menu(atoms_, desktop_.statusItem.openMenu);
        menu.open(QRect());
        menu.setActiveAction(menu.actions().at(2));
        take(menu, "menu");
        desktop_.shortcuts.enabled[81] = true;
        menu.close();
        menu.open(QRect());
        menu.setActiveAction(menu.actions().at(5));
        take(menu, "menu-jumps");
        settle();
        ui::StatusButtonPlace place(desktop_.screens);
        ui::StatusButton button({.atoms = atoms_, .screens = desktop_.screens, .place = place}, [] {});
        button.setTitle(desktop_.statusItem.title);
        button.adjustSize();
        take(button, "status-button");
    }
    void takeToastAndAlert() {
        ui::QtToast toast({"Deleted “Code review”", [] {}}, atoms_);
        toast.adjustSize();
        take(toast, "toast");
        ui::AlertBox alert(
            {"Could not jump to that Space",
             "The desktop did not change. Turn the shortcuts for moving a space on and try again.",
             {"Open Keyboard Shortcuts", "OK"}},
            atoms_, [](auto) {});
        alert.show();
        take(alert, "alert");
    }

    static void press(Qt::Key key, int times = 1) {
        desktop_test::OffscreenApplication::settle();
        for (int i = 0; i < times; ++i) QTest::keyClick(QApplication::focusWidget(), key);
    }
    void take(QWidget& widget, const char* name) const {
        desktop_test::OffscreenApplication::settle();
        const auto file = folder_ + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png");
        if (!widget.grab().save(file)) throw std::runtime_error(file.toStdString());
    }

    QString folder_;
    void saveDiagnostics() override {}
    void checkForUpdates() override {}
    void terminate() override {}

    orvellos::StatusItemController statusItem_{statusItemServices(panels_, *this)};
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("usage: orvello-gallery FOLDER POINTS light|dark\n", stderr);
        return 1;
    }
    const bool isDark = argv[3] == std::string("dark");
    Gallery(QString::fromUtf8(argv[1]), std::atof(argv[2]),
            isDark ? ui::ColorScheme::Dark : ui::ColorScheme::Light)
        .takeAll();
    return 0;
}
