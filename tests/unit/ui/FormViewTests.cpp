// The forms, the menu and the other widgets, without a screen.

#include <QAccessible>
#include <QClipboard>
#include <QColorDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QToolTip>

#include "orvellos/menu/OwnKeys.h"
#include "orvellos/settings/HotkeyNames.h"
#include "tests/support/InterfaceTest.h"
#include "tests/support/NoWindowFocus.h"
#include "tests/support/OffscreenApplication.h"
#include "ui/panels/AboutView.h"
#include "ui/panels/AlertBox.h"
#include "ui/panels/CreateTagView.h"
#include "ui/panels/EditTagsView.h"
#include "ui/panels/QtPanel.h"
#include "ui/panels/QtToast.h"
#include "ui/panels/QuickSwitcherView.h"
#include "ui/panels/SettingsView.h"
#include "ui/status/QtMenuBar.h"
#include "ui/status/StatusMenu.h"
#include "ui/widgets/Appearance.h"

namespace ui {
namespace {

using orvellos::CreateTagForm;
using orvellos::EditTagsList;
using orvellos::Texts;

const std::string kLong(10'000, 'W');
const std::string kRightToLeft = "שלום עולם";

// What a screen reader says of the widget that has the keyboard: role, name, value and description.
std::string spoken() {
    auto* widget = QApplication::focusWidget();
    auto* accessible = widget ? QAccessible::queryAccessibleInterface(widget) : nullptr;
    if (!accessible) return "nothing";
    const auto role = accessible->role();
    const std::string name = accessible->text(QAccessible::Name).toStdString();
    const std::string description = accessible->text(QAccessible::Description).toStdString();
    const bool isChosen = role == QAccessible::RadioButton && accessible->state().checked;
    const auto value = isChosen ? accessible->text(QAccessible::Value).toStdString() : "";
    const char* kind = role == QAccessible::EditableText                                ? "field "
                       : role == QAccessible::RadioButton                               ? "choice "
                       : role == QAccessible::Button || role == QAccessible::ButtonMenu ? "button "
                                                                                        : "? ";
    return kind + name + (value.empty() ? "" : " is " + value) +
           (description.empty() || description == name ? "" : ", " + description);
}

class FormViewTest : public orvellos::InterfaceTest {
  protected:
    // Shows the content in a panel, with the keyboard.
    QtPanel& show(const char* title, QWidget* content) {
        panel_ = std::make_unique<QtPanel>(host_.titled(title)->shell, content, focus_,
                                           [this] { closed_ = true; });
        panel_->makeKeyAndOrderFront();
        EXPECT_TRUE(QTest::qWaitForWindowActive(panel_.get()));
        return *panel_;
    }
    QtPanel& showCreateForm() {
        panels_.showCreatePanel("A");
        auto* form = std::get<CreateTagForm*>(host_.titled("Tag This Space")->content);
        form->colorHex = "#10b981";
        return show("Tag This Space", new CreateTagView(*form, colorPanel_));
    }
    QtPanel& showList() {
        panels_.showEditPanel();
        return show("Edit Tag", new EditTagsView(*std::get<EditTagsList*>(host_.titled("Edit Tag")->content),
                                                 colorPanel_, atoms_));
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        desktop_test::OffscreenApplication::settle();
    }
    static void type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    // What has the keyboard as Tab is pressed again and again.
    static Texts tabbedThrough(int times) {
        Texts stops = {spoken()};
        for (int i = 1; i < times; ++i) {
            press(Qt::Key_Tab);
            stops.push_back(spoken());
        }
        return stops;
    }

    desktop_test::OffscreenApplication application_;
    const platform::x11::Atoms atoms_{};  // of no server
    ColorPanel colorPanel_;
    bool closed_ = false;
    desktop_test::NoWindowFocus focus_;
    std::unique_ptr<QtPanel> panel_;
};

TEST_F(FormViewTest, TheCreateFormIsFilledInByKeysAlone) {
    showCreateForm().move(0, 0);
    EXPECT_EQ(spoken(), "field Label, WORK");
    press(Qt::Key_Return);
    EXPECT_EQ(store_.tags().size(), 2U) << "there is no label yet";
    type("  Home ");
    EXPECT_EQ(tabbedThrough(5), (Texts{"field Label, WORK", "choice Green is Selected", "button Cancel",
                                       "button Create", "field Label, WORK"}));
    press(Qt::Key_Tab);
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    EXPECT_EQ(spoken(), "choice Amber is Selected");
    for (int i = 0; i < 7; ++i) press(Qt::Key_Right);
    EXPECT_FALSE(colorPanel_.isVisible()) << "until any other color is asked for";
    for (const auto answer : {Qt::Key_Return, Qt::Key_Escape}) {
        press(Qt::Key_Space);
        auto* dialog = panel_->findChild<QColorDialog*>();
        EXPECT_FALSE(dialog->geometry().intersects(panel_->geometry()));
        dialog->setCurrentColor(answer == Qt::Key_Return ? QColor("#F59E0C") : QColor("#000000"));
        QTest::keyClick(dialog, answer);
        panel_->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(panel_.get()));
    }
    press(Qt::Key_Return);
    ASSERT_EQ(store_.tags().size(), 3U);
    EXPECT_EQ(std::tie(tag(2).label, tag(2).colorHex), std::tuple("Home", "#F59E0C"));
}

TEST_F(FormViewTest, ADoubleClickDeletesOneTagAndTheListKeepsTheHeightItWasGiven) {
    manager_.createTag("Between", "#123456", "B");
    auto& panel = showList();
    panel.resize(panel.width(), 190);
    auto* trash = panel.findChild<QToolButton*>("trash");
    const auto place = trash->mapTo(&panel, trash->rect().center());
    QTest::mouseDClick(panel.windowHandle(), Qt::LeftButton, {}, place);
    EXPECT_EQ(store_.tags().size(), 2U);
    panel.findChildren<QToolButton*>("pencil").back()->click();
    desktop_test::OffscreenApplication::settle();
    EXPECT_EQ(panel.height(), 190);
    const auto* save = panel.findChild<QPushButton*>();
    EXPECT_EQ(save->visibleRegion().boundingRect(), save->rect()) << "it is scrolled to";
}

TEST_F(FormViewTest, TheListIsReadInTheOrderItIsSeen) {
    settings_.visibilityMode.set(orvellos::TagVisibilityMode::HiddenDuringWork);
    showList();
    press(Qt::Key_Tab);
    const Texts row = {"button Edit Mail, Edit label and color", "button Jump to Mail, Jump to this Space",
                       "button Position actions for Mail, Position actions",
                       "button Delete Mail, Delete (undo available for 5 seconds)"};
    auto stops = tabbedThrough(6);
    EXPECT_EQ(stops.at(0), "button Settings");
    EXPECT_EQ(Texts(stops.begin() + 1, stops.begin() + 5), row);
    EXPECT_EQ(stops.at(5), "button Edit Code, Edit label and color");
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QApplication::sendEvent(QApplication::focusWidget(), &held);
    EXPECT_EQ(spoken(), stops.at(5)) << "a key that repeats";
}

TEST_F(FormViewTest, WhatIsReadOfTheListIsNoMarkup) {
    desktop_.spaces.removeSpace("A");
    desktop_.spaces.notifyActiveSpaceChanged();
    wait(1);
    showList();
    Texts labels;
    for (auto* widget : panel_->findChildren<QWidget*>()) {
        const auto* read = QAccessible::queryAccessibleInterface(widget);
        for (const auto kind : {QAccessible::Name, QAccessible::Description})
            EXPECT_FALSE(read->text(kind).contains('<')) << read->text(kind).toStdString();
        if (read->role() == QAccessible::StaticText && widget->isVisible())
            labels.push_back(read->text(QAccessible::Name).toStdString());
    }
    EXPECT_EQ(labels, (Texts{"Your tags", "2", "Code", "Mail", "Space no longer exists"}));
}

TEST_F(FormViewTest, WhatIsCutOffIsAllInItsTooltip) {
    const auto toolTipOf = [](QWidget* widget) {
        QHelpEvent event(QEvent::ToolTip, {30, 10}, widget->mapToGlobal(QPoint(30, 10)));
        QApplication::sendEvent(widget, &event);
        return QToolTip::text().toStdString();
    };
    for (const auto& [label, tip] : {std::pair<std::string, std::string>("Mail", ""),
                                     {"<i>" + std::string(60, 'W'), "<p style='white-space:pre'>&lt;i&gt;" +
                                                                        std::string(60, 'W') + "</p>"}}) {
        manager_.updateTag(tag(0).id, label, "#10B981");
        showList();
        const auto labels = panel_->findChildren<QLabel*>();
        EXPECT_EQ(toolTipOf(*std::ranges::find(labels, QString(label.c_str()), &QLabel::text)), tip);
        panels_.showQuickSwitcher();
        auto& switcher = *std::get<orvellos::QuickSwitcher*>(host_.titled("Jump to Space")->content);
        auto& panel = show("Jump to Space", new QuickSwitcherView(switcher));
        EXPECT_EQ(toolTipOf(panel.findChild<QListView*>()->viewport()), tip);
        switcher.keyDown(platform::key::kEscape);
        wait(0.01);
    }
}

TEST_F(FormViewTest, ARowIsEditedAndGivesTheKeyboardBack) {
    showList();
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_EQ(spoken(), "field Label, WORK");
    type("Post");
    manager_.createTag("Another", "#123456", "B");
    desktop_test::OffscreenApplication::settle();
    EXPECT_EQ(spoken(), "field Label, WORK") << "the rows were made anew meanwhile";
    type("ed");
    press(Qt::Key_Return);
    EXPECT_EQ(tag(0).label, "Posted");
    EXPECT_EQ(spoken(), "button Edit Posted, Edit label and color");
    press(Qt::Key_Space);
    type("nothing");
    press(Qt::Key_Escape);
    EXPECT_EQ(tag(0).label, "Posted");
    EXPECT_FALSE(closed_) << "Escape ended the editing alone";
    press(Qt::Key_Space);
    manager_.deleteTag(tag(0).id);
    desktop_test::OffscreenApplication::settle();
    EXPECT_EQ(panel_->findChildren<QLineEdit*>().size(), 0) << "its tag is gone";
}

TEST_F(FormViewTest, TheQuickSwitcherIsTypedIntoAndReadAloud) {
    panels_.showQuickSwitcher();
    auto& switcher = *std::get<orvellos::QuickSwitcher*>(host_.titled("Jump to Space")->content);
    auto& panel = show("Jump to Space", new QuickSwitcherView(switcher));
    EXPECT_EQ(spoken(), "field Jump to Space…");
    auto* list = panel.findChild<QListView*>();
    const auto row = [&](int index) {
        return list->model()->index(index, 0).data(Qt::AccessibleTextRole).toString().toStdString();
    };
    EXPECT_EQ(row(0) + "; " + row(1), "Mail, Desktop 1, current Space; Untagged, Desktop 2");
    press(Qt::Key_Down);
    EXPECT_EQ(list->currentIndex().row(), 1);
    QTest::mouseClick(list->viewport(), Qt::RightButton, {},
                      list->visualRect(list->model()->index(2, 0)).center());
    EXPECT_EQ(list->currentIndex().row(), switcher.selectedIndex()) << "what is highlighted is chosen";
    desktop_.spaces.setCurrentSpace("B");
    panels_.showQuickSwitcher();
    EXPECT_EQ(row(1), "Untagged, Desktop 2, current Space");
    EXPECT_EQ(list->currentIndex().row(), 1);
    type("co");
    EXPECT_EQ(row(0), "Code, Desktop 3");
    type("zz");
    EXPECT_FALSE(list->isVisible());
    press(Qt::Key_Return);
    EXPECT_FALSE(panel.isHidden()) << "there is nowhere to go";
    press(Qt::Key_Escape);
    EXPECT_FALSE(host_.titled("Jump to Space") && host_.titled("Jump to Space")->visible);
}

TEST_F(FormViewTest, TheSettingsWriteAtOnceAndFollow) {
    panels_.showSettingsPanel();
    auto& form = *std::get<orvellos::SettingsForm*>(host_.titled("orvellos Settings")->content);
    auto& panel = show("orvellos Settings", new SettingsView(form));
    const auto control = [&](const char* name) -> QAbstractButton& {
        for (auto* button : panel.findChildren<QAbstractButton*>())
            if (button->accessibleName() == name) return *button;
        throw std::runtime_error(name);
    };
    press(Qt::Key_Tab);
    EXPECT_EQ(tabbedThrough(2), (Texts{"choice Shape: Tag", "choice Label size: M"}));
    control("Shape: Pill").click();
    control("Label size: XL").click();
    control("Show tags during normal work").click();
    control("Mission Control style: Full").click();
    EXPECT_EQ(settings_.globalTagShape.get(), orvellos::TagShape::Pill);
    EXPECT_EQ(settings_.tagSize.get(), orvellos::TagSize::ExtraLarge);
    EXPECT_EQ(settings_.visibilityMode.get(), orvellos::TagVisibilityMode::HiddenDuringWork);
    EXPECT_EQ(settings_.missionControlStyle.get(), orvellos::MissionControlStyle::Fullscreen);
    EXPECT_TRUE(control("Shape: Pill").isChecked() && !control("Shape: Tag").isChecked());
    settings_.embiggenAllTags.set(true);
    EXPECT_TRUE(control("Embiggen all tags").isChecked());
    settings_.tagSize.set(orvellos::TagSize::MissionControl);
    EXPECT_FALSE(control("Label size: XL").isChecked()) << "not one of the choices";
    const auto warns = [&] {
        const auto labels = panel.findChildren<QLabel*>();
        return std::ranges::any_of(labels, [](const auto* label) {
            return label->text() == "Space-switch shortcuts disabled" && label->isVisible();
        });
    };
    EXPECT_FALSE(warns());
    desktop_.shortcuts.enabled[81] = false;
    wait(1.1);
    EXPECT_TRUE(warns()) << "as soon as it is noticed";
    desktop_.loginItem.failure = platform::Error{"no"};
    control("Launch at login").click();
    EXPECT_FALSE(control("Launch at login").isChecked()) << "the system's word counts";
}

TEST_F(FormViewTest, AShortcutIsRecordedInItsField) {
    hotkeys_.create(orvellos::hotkey::peekTags);
    panels_.showSettingsPanel();
    auto& form = *std::get<orvellos::SettingsForm*>(host_.titled("orvellos Settings")->content);
    auto& panel = show("orvellos Settings", new SettingsView(form));
    QLineEdit* field = nullptr;
    for (auto* each : panel.findChildren<QLineEdit*>())
        if (each->accessibleName() == "Peek at hidden tags") field = each;
    ASSERT_TRUE(field);
    EXPECT_EQ(field->text(), "⌃⌥⌘P");
    // A key of the keyboard of X: evdev's code + 8.
    const auto pressKey = [&](QEvent::Type type, std::uint32_t code, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(type, 0, modifiers, code, 0, 0);
        QApplication::sendEvent(field, &event);
        desktop_test::OffscreenApplication::settle();
    };
    field->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(field->text(), "Type Shortcut…");
    pressKey(QEvent::KeyPress, 20 + 8, Qt::NoModifier);
    const auto warning = field->accessibleDescription();
    EXPECT_TRUE(warning.startsWith("T alone would no longer type.")) << warning.toStdString();
    const auto labels = panel.findChildren<QLabel*>();
    EXPECT_TRUE(std::ranges::any_of(labels, [&](const auto* label) {
        return label->text() == warning && !label->visibleRegion().isEmpty();
    })) << "it is scrolled to";
    pressKey(QEvent::KeyPress, 20 + 8, Qt::ControlModifier);
    EXPECT_EQ(field->text(), "⌃T");
    pressKey(QEvent::KeyRelease, 20 + 8, Qt::ControlModifier);
    wait(0.1);
    EXPECT_EQ(hotkeys_.displayText(orvellos::hotkey::peekTags), "⌃T");
    EXPECT_EQ(field->accessibleDescription(), "");
    press(Qt::Key_Backspace);
    EXPECT_EQ(field->text(), "Record Shortcut");
    EXPECT_EQ(hotkeys_.displayText(orvellos::hotkey::peekTags), std::nullopt);
    press(Qt::Key_Escape);
    EXPECT_TRUE(panel.isHidden()) << "nothing is recorded any more";
}

TEST_F(FormViewTest, TheAboutWindowTellsTheShortcutsOfNow) {
    const auto texts = [this] {
        panels_.showAbout();
        AboutView view(*std::get<const orvellos::About*>(host_.titled("About orvellos")->content));
        std::string all;
        for (const auto* label : view.findChildren<QLabel*>()) all += label->text().toStdString() + "|";
        host_.titled("About orvellos")->close();
        wait(0.1);
        return all;
    };
    EXPECT_NE(texts().find("built 2026-03-14 09:26|Tag this Space|—|"), std::string::npos) << texts();
    hotkeys_.create(orvellos::hotkey::peekTags);
    EXPECT_NE(texts().find("Peek at hidden tags|⌃⌥⌘P|"), std::string::npos) << texts();
    hotkeys_.setShortcut(keyboard_shortcuts::Shortcut{96, 0}, orvellos::hotkey::peekTags);
    EXPECT_NE(texts().find("Peek at hidden tags|F5|"), std::string::npos) << texts();
}

TEST_F(FormViewTest, TheBuildIsCopiedFromTheAboutWindow) {
    panels_.showAbout();
    const auto about = *std::get<const orvellos::About*>(host_.titled("About orvellos")->content);
    QtMenuBar menuBar;
    menuBar.setMainMenu(orvellos::mainMenu([] {}));
    menuBar.attachTo(show("About orvellos", new AboutView(about)));
    press(Qt::Key_Tab);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), about.buildText);
}

TEST_F(FormViewTest, AnOpenPanelFollowsTheColorScheme) {
    desktop_.spaces.removeSpace("A");
    desktop_.spaces.notifyActiveSpaceChanged();
    wait(1);
    const auto picture = [](QtPanel& panel) { return panel.grab().toImage(); };
    applyColorScheme(ColorScheme::Light);
    const auto light = picture(showList());
    applyColorScheme(ColorScheme::Dark);
    desktop_test::OffscreenApplication::settle();
    const auto followed = picture(*panel_);
    EXPECT_EQ(followed, picture(showList())) << "as one that is opened in the dark";
    EXPECT_NE(followed, light);
    applyColorScheme(ColorScheme::Unknown);
}

TEST_F(FormViewTest, NoLabelBreaksALayout) {
    showList();
    const auto size = panel_->size();
    StatusMenu menu(atoms_, [this] {
        std::vector<platform::MenuItem> rows;
        for (const auto& each : store_.tags()) rows.push_back({.title = each.label, .toolTip = each.label});
        return rows;
    });
    for (const auto& label :
         {kLong, kRightToLeft, std::string("🙂👨‍👩‍👧🇮🇱"), std::string(" \n\t"),
          std::string("<b>a</b>&amp;&b\tc"), std::string("\xFF\xFE")}) {
        manager_.updateTag(tag(0).id, label, "#10B981");
        desktop_test::OffscreenApplication::settle();
        EXPECT_EQ(panel_->size(), size) << label.substr(0, 20);
        const QtToast toast({"Deleted “" + label + "”", [] {}}, atoms_);
        EXPECT_LE(toast.width(), 480);
        EXPECT_LT(toast.height(), 60);
        AlertBox alert({label, label.substr(0, 200), {"OK"}}, atoms_, [](auto) {});
        alert.adjustSize();
        EXPECT_LT(alert.width(), 600);
        menu.open({0, 0});
        EXPECT_LT(menu.width(), 600) << label.substr(0, 20);
        if (label.starts_with("<b>")) {
            EXPECT_EQ(menu.actions().at(0)->text().section('\t', 0, 0), "<b>a</b>&&amp;&&b");
            EXPECT_FALSE(menu.actions().at(0)->toolTip().contains("<b>"));
        }
        menu.close();
    }
}

TEST_F(FormViewTest, TheToastHasASoftShadowOrASharpSilhouette) {
    QtToast toast({"Deleted “Mail”", [] {}}, atoms_);
    EXPECT_TRUE(toast.testAttribute(Qt::WA_AlwaysShowToolTips)) << "it is never the active window";
    auto image = toast.grab().toImage();
    const auto alpha = [&image](int x, int y) { return image.pixelColor(x, y).alpha(); };
    EXPECT_FALSE(toast.mask().contains(QPoint(1, 1)));
    for (const auto& part : toast.mask())
        for (int x = part.left(); x <= part.right(); ++x) EXPECT_EQ(alpha(x, part.top()), 255) << x;
    toast.setComposited(true);
    image = toast.grab().toImage();
    EXPECT_TRUE(toast.mask().isEmpty());
    const int middle = toast.width() / 2;
    const int bottom = toast.capsule().bottom();
    EXPECT_EQ(alpha(middle, bottom - 4), 255);
    EXPECT_GT(alpha(middle, bottom + 3), alpha(middle, bottom + 12));
    EXPECT_GT(alpha(middle, bottom + 12), 0);
    EXPECT_LE(alpha(middle, toast.height() - 1), 1);
}

TEST_F(FormViewTest, TheMenuSwapsAlternatesAndTakesKeys) {
    Texts chosen;
    const auto choice = [&](const char* name) { return [&chosen, name] { chosen.emplace_back(name); }; };
    StatusMenu menu(atoms_, [&] {
        return std::vector<platform::MenuItem>{
            {.title = "Desktop 1: Mail", .action = choice("jump")},
            {.title = "Reassign “Mail” here", .action = choice("reassign"), .isAlternate = true},
            {.title = "Disabled"},
            {.title = "Quit",
             .action = choice("quit"),
             .keyEquivalent = {{'q', platform::modifier::kCommand}}}};
    });
    const auto shown = [&] {
        Texts titles;
        for (const auto* action : menu.actions())
            if (action->isVisible()) titles.push_back(action->text().toStdString());
        return titles;
    };
    menu.open({0, 0});
    EXPECT_EQ(shown(), (Texts{"Desktop 1: Mail", "Disabled", "Quit\tCtrl+Q"}));
    const int width = menu.width();
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyPress(&menu, Qt::Key_Alt);
    EXPECT_EQ(shown().front(), "Reassign “Mail” here");
    EXPECT_EQ(menu.width(), width);
    QTest::keyClick(&menu, Qt::Key_Return);
    menu.open({0, 0});
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyPress(&menu, Qt::Key_Alt);
    QTest::keyRelease(&menu, Qt::Key_Alt);
    QTest::keyClick(&menu, Qt::Key_Return);
    menu.open({0, 0});
    QTest::keyClick(&menu, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(chosen, (Texts{"reassign", "jump", "quit"}));
    EXPECT_FALSE(menu.isVisible());
}

TEST_F(FormViewTest, AnAlertIsAnsweredOnce) {
    for (const auto& [key, answer] : {std::pair{Qt::Key_Return, 0U}, std::pair{Qt::Key_Escape, 1U}}) {
        std::vector<std::size_t> answers;
        auto* alert = new AlertBox({"message", "text", {"Open", "OK"}}, atoms_,
                                   [&](std::size_t button) { answers.push_back(button); });
        alert->show();
        EXPECT_EQ(QApplication::activeModalWidget(), alert);
        ASSERT_TRUE(QTest::qWaitForWindowActive(alert));
        press(key);
        EXPECT_EQ(answers, std::vector<std::size_t>{answer});
    }
}

}  // namespace
}  // namespace ui
