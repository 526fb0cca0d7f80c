// The welcome window, by what the user sees and presses.

#include "ui/panels/WelcomeView.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "tests/support/InterfaceTest.h"
#include "tests/support/NoWindowFocus.h"
#include "tests/support/OffscreenApplication.h"
#include "ui/panels/QtPanel.h"

namespace ui {
namespace {

using orvellos::WelcomeForm;

class WelcomeViewTest : public orvellos::InterfaceTest {
  protected:
    void open(WelcomeForm::Mode mode = WelcomeForm::Mode::FirstRun) {
        panels_.showWelcome(mode);
        auto& shown = *host_.titled("Welcome to orvellos");
        panel_ = std::make_unique<QtPanel>(
            shown.shell, new WelcomeView(*std::get<WelcomeForm*>(shown.content)), focus_, [] {});
        panel_->makeKeyAndOrderFront();
        EXPECT_TRUE(QTest::qWaitForWindowActive(panel_.get()));
    }
    void pressReturnOn(const char* name) {
        button(name)->setFocus();
        press(Qt::Key_Return);
    }
    // The button that can be seen, by what a screen reader says; null when none can.
    QPushButton* button(const char* name) {
        for (auto* each : panel_->findChildren<QPushButton*>()) {
            const auto spoken = each->accessibleName().isEmpty() ? each->text() : each->accessibleName();
            if (spoken == name && each->isVisible()) return each;
        }
        return nullptr;
    }
    void press(Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        desktop_test::OffscreenApplication::settle();
    }
    bool isOpen() {
        wait(0.01);
        return host_.titled("Welcome to orvellos") != nullptr;
    }
    bool isRecorded() { return settings_.hasSeenWelcome.get() && settings_.lastWelcomeVersion.get() == 2; }

    desktop_test::OffscreenApplication application_;
    desktop_test::NoWindowFocus focus_;
    std::unique_ptr<QtPanel> panel_;
};

TEST_F(WelcomeViewTest, FinishesInThreeWaysAndAllAreRecorded) {
    for (const auto* last : {"Skip", "Done", "Tag my first Space"}) {
        SCOPED_TRACE(last);
        settings_.hasSeenWelcome.set(false);
        settings_.lastWelcomeVersion.set(0);
        open();
        if (!button(last)) {
            press(Qt::Key_Return);
            ASSERT_TRUE(button("Back"));
            pressReturnOn("Back");
            ASSERT_TRUE(button("Skip")) << "there and back";
            pressReturnOn("Continue");
        }
        EXPECT_FALSE(isRecorded());
        pressReturnOn(last);
        EXPECT_TRUE(isRecorded());
        EXPECT_FALSE(isOpen());
        EXPECT_EQ(host_.titled("Tag This Space") != nullptr, last == std::string("Tag my first Space"));
    }
}

TEST_F(WelcomeViewTest, ClosingItRecordsNothing) {
    open();
    press(Qt::Key_Escape);
    EXPECT_FALSE(panel_->isVisible());
    host_.titled("Welcome to orvellos")->close();
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(isRecorded());
}

TEST_F(WelcomeViewTest, KeepsItsSizeAndSaysWhatIsNew) {
    open(WelcomeForm::Mode::WhatsNew);
    const auto size = panel_->size();
    const auto says = [&](const char* text) {
        return std::ranges::any_of(panel_->findChildren<QLabel*>(), [&](const auto* label) {
            return label->isVisible() && label->text() == text;
        });
    };
    EXPECT_TRUE(says("What’s new in orvellos") && says("A few things you may not have seen yet."));
    EXPECT_TRUE(says("Move tags between Spaces"));
    press(Qt::Key_Return);
    EXPECT_TRUE(says("What’s new in orvellos") && says("Two quick permissions"));
    EXPECT_FALSE(says("Move tags between Spaces"));
    EXPECT_EQ(panel_->size(), size);
}

TEST_F(WelcomeViewTest, PermissionsTurnGreenByThemselves) {
    desktop_.permissions.inputMonitoringTrusted = false;
    desktop_.permissions.accessibilityTrusted = false;
    open();
    button("Continue")->click();
    ASSERT_TRUE(button("Request: Input Monitoring") && button("Open Settings: Accessibility"));
    button("Request: Accessibility")->click();
    EXPECT_EQ(desktop_.permissions.asked, orvellos::Texts{"prompt for Accessibility"});
    button("Request: Accessibility")->setFocus();
    EXPECT_LT(button("Request: Accessibility")->x(), button("Open Settings: Accessibility")->x());
    press(Qt::Key_Tab);
    EXPECT_TRUE(button("Open Settings: Accessibility")->hasFocus()) << "in the order they are seen";
    button("Request: Accessibility")->setFocus();
    desktop_.permissions.accessibilityTrusted = true;
    wait(1.01);
    EXPECT_FALSE(button("Request: Accessibility"));
    ASSERT_TRUE(button("Reload: Accessibility"));
    EXPECT_TRUE(button("Reload: Accessibility")->hasFocus()) << "the keyboard stays in the row";
    EXPECT_TRUE(button("Request: Input Monitoring"));

    button("Back")->click();
    desktop_.permissions.inputMonitoringTrusted = true;
    wait(3);
    EXPECT_FALSE(std::get<WelcomeForm*>(host_.titled("Welcome to orvellos")->content)
                     ->permissionRows()
                     .front()
                     .isGranted())
        << "nobody looks";
    button("Continue")->click();
    EXPECT_TRUE(button("Reload: Input Monitoring"));
}

}  // namespace
}  // namespace ui
