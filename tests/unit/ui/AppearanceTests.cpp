// What can be computed of how the panels look: contrast, room for every text, and the mark of the keyboard.

#include "ui/widgets/Appearance.h"

#include <QColorDialog>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QToolButton>
#include <map>

#include "orvellos/tags/TagColor.h"
#include "tests/support/PanelsTest.h"
#include "ui/panels/AlertBox.h"
#include "ui/panels/QtPanel.h"
#include "ui/widgets/Colors.h"
#include "ui/widgets/Metrics.h"
#include "ui/widgets/Style.h"
#include "ui/widgets/Symbols.h"

namespace ui {
namespace {

using orvellos::PanelController;
using orvellos::WelcomeForm;

struct PanelCase {
    const char* title = nullptr;
    void (*open)(PanelController& panels) = nullptr;
    int stops = 0;  // at least so many controls can have the keyboard
};
const std::array kPanels = {
    PanelCase{"Tag This Space", [](auto& panels) { panels.showCreatePanel("B"); }, 3},
    PanelCase{"Edit Tag", [](auto& panels) { panels.showEditPanel(); }, 9},
    PanelCase{"orvellos Settings", [](auto& panels) { panels.showSettingsPanel(); }, 20},
    PanelCase{"About orvellos", [](auto& panels) { panels.showAbout(); }, 1},
    PanelCase{"Welcome to orvellos", [](auto& panels) { panels.showWelcome(WelcomeForm::Mode::FirstRun); },
              2},
    PanelCase{"Jump to Space", [](auto& panels) { panels.showQuickSwitcher(); }},
};

class AppearanceTest : public orvellos::PanelsTest {
  protected:
    AppearanceTest() {
        desktop_.permissions.inputMonitoringTrusted = false;
        desktop_.shortcuts.enabled[81] = false;
        start();
    }
    QWidget& open(const PanelCase& each) {
        each.open(panels_);
        return panel(each.title);
    }
    // What of a widget has no room in it, or is beyond the edge of what it is in; empty when all is seen.
    static std::string cutOff(const QWidget& panel) {
        std::string all;
        for (const auto* each : panel.findChildren<QWidget*>()) {
            const bool shows = qobject_cast<const QLabel*>(each) || qobject_cast<const QLineEdit*>(each) ||
                               qobject_cast<const QAbstractButton*>(each);
            if (!shows || !each->isVisible()) continue;
            const auto needed = each->minimumSizeHint();
            const int height =
                each->hasHeightForWidth() ? each->heightForWidth(each->width()) : needed.height();
            const int x = each->mapTo(&panel, QPoint()).x();
            const bool isInside = each->parentWidget()->rect().contains(each->geometry()) && x >= 0 &&
                                  x + each->width() <= panel.width();
            if (isInside && each->width() >= needed.width() && each->height() >= height) continue;
            const auto* label = qobject_cast<const QLabel*>(each);
            all += (label ? label->text() : each->accessibleName()).left(30).toStdString() + "; ";
        }
        return all;
    }
    static void useFontOf(double points) {
        auto font = QApplication::font();
        font.setPointSizeF(points);
        QApplication::setFont(font);
    }
    // Whether the ring and its gap are at both ends of the column through its middle.
    static bool hasRing(QWidget& widget) {
        desktop_test::OffscreenApplication::settle();
        const auto picture = widget.grab().toImage();
        const auto ring = focusRingColor(QApplication::palette());
        const auto isRing = [&](int y) {
            const auto pixel = picture.pixelColor(picture.width() / 2, y);
            return std::abs(pixel.red() - ring.red()) + std::abs(pixel.green() - ring.green()) +
                       std::abs(pixel.blue() - ring.blue()) <
                   40;  // round shapes are smoothed
        };
        const int end = picture.height() - 1;
        return isRing(0) && isRing(1) && !isRing(2) && !isRing(end - 2) && isRing(end - 1) && isRing(end);
    }
};

QPalette paletteOf(const char* window, const char* text, const char* base, const char* accent) {
    QPalette palette{QColor(window)};
    for (const auto role : {QPalette::WindowText, QPalette::Text}) palette.setColor(role, QColor(text));
    palette.setColor(QPalette::Base, QColor(base));
    palette.setColor(QPalette::PlaceholderText, QColor(128, 128, 128));
    palette.setColor(QPalette::Highlight, QColor(accent));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

TEST_F(AppearanceTest, EveryTextCanBeReadAndEveryShapeSeen) {
    applyColorScheme(ColorScheme::Light);
    const auto light = QApplication::palette();
    applyColorScheme(ColorScheme::Dark);
    const std::pair<const char*, QPalette> palettes[] = {
        {"light", light},
        {"dark", QApplication::palette()},
        {"of a light desktop", paletteOf("#eff0f1", "#31363b", "#fcfcfc", "#3daee9")},
        {"of a dark desktop", paletteOf("#31363b", "#eff0f1", "#232629", "#3daee9")},
        {"with a yellow accent", paletteOf("#ffffff", "#000000", "#ffffff", "#ffe000")},
        {"with a dark accent", paletteOf("#202020", "#ffffff", "#101010", "#101060")},
    };
    for (const auto& [name, own] : palettes) {
        SCOPED_TRACE(name);
        const auto palette = readable(own);
        const auto window = windowColor(palette);
        for (const auto color : {secondaryLabelColor, tertiaryLabelColor, warningColor, focusRingColor})
            EXPECT_GE(contrast(color(palette), window), kTextContrast);
        EXPECT_GE(contrast(grantedColor(palette), window), kShapeContrast);
        for (const auto color : {accentShapeColor, outlineColor}) {  // a switch, on and off
            EXPECT_GE(contrast(color(palette), window), kShapeContrast);
            EXPECT_GE(contrast(Qt::white, color(palette)), kShapeContrast) << "its knob";
        }
        EXPECT_GE(contrast(onAccentColor(palette), accentColor(palette)), kTextContrast);
        for (const auto& color : orvellos::tagPalette)
            for (const auto& ground : {window, accentColor(palette)}) {
                const auto dot = dotOnGround(QColor(color.hex.data()), ground, 14, 1).toImage();
                const double rim = contrast(over(ground, dot.pixelColor(0, 7)), ground);
                EXPECT_GE(std::max(rim, contrast(dot.pixelColor(7, 7), ground)), kShapeContrast);
            }
        EXPECT_GE(contrast(palette.color(QPalette::PlaceholderText), palette.color(QPalette::Base)),
                  kTextContrast);
    }
    applyColorScheme(ColorScheme::Unknown);
}

TEST_F(AppearanceTest, TheSelectedRowOfTheQuickSwitcherCanBeRead) {
    useFontOf(20);  // strokes of a whole pixel and more
    for (const auto scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        applyColorScheme(scheme);
        auto* list = open(kPanels[5]).findChild<QListView*>();
        const auto row = list->visualRect(list->currentIndex());
        const auto picture = list->viewport()->grab(row).toImage();
        const auto ground = picture.pixelColor(picture.width() / 2, 3);
        double best = 0;  // in the half with the desktop's number, up to the checkmark
        for (int x = picture.width() / 2; x < picture.width() - 36; ++x)
            for (int y = 0; y < picture.height(); ++y)
                best = std::max(best, contrast(picture.pixelColor(x, y), ground));
        EXPECT_GE(best, kTextContrast);
        panels_.close(orvellos::PanelKind::QuickSwitcher);
    }
    applyColorScheme(ColorScheme::Unknown);
}

TEST_F(AppearanceTest, EveryTextFollowsTheFontAndIsNeverCutOff) {
    std::map<QString, double> sizes;  // in proportion
    for (const double points : {9, 11, 14, 20}) {
        useFontOf(points);
        for (const auto& each : kPanels) {
            SCOPED_TRACE(std::string(each.title) + " at " + std::to_string(points));
            auto& window = open(each);
            EXPECT_EQ(cutOff(window), "");
            for (const auto* label : window.findChildren<QLabel*>()) {
                if (label->text().isEmpty()) continue;
                const double size = label->font().pointSizeF() / points;
                EXPECT_NEAR(sizes.emplace(each.title + label->text(), size).first->second, size, 0.01);
            }
            EXPECT_LE(window.height(), roomOn(window.screen()).height());
            if (each.title == std::string("Welcome to orvellos"))
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);  // to its second page
            window.resize(window.minimumSize());
            desktop_test::OffscreenApplication::settle();
            EXPECT_EQ(cutOff(window), "");
            window.close();
            wait(0.1);
        }
    }
}

TEST_F(AppearanceTest, WhatHasTheKeyboardIsMarkedInOneWay) {
    for (const auto scheme : {ColorScheme::Light, ColorScheme::Dark})
        for (const auto& each : kPanels) {
            applyColorScheme(scheme);
            auto& window = open(each);
            int stops = 0;
            for (auto* control : window.findChildren<QWidget*>()) {
                const auto* field = qobject_cast<const QLineEdit*>(control);
                const bool isPlain = field && !field->hasFrame();  // it is the only control of its panel
                if (!(control->focusPolicy() & Qt::TabFocus) || !control->isVisible() || isPlain) continue;
                SCOPED_TRACE(std::string(each.title) + ": " + control->accessibleName().toStdString());
                window.setFocus();
                EXPECT_FALSE(hasRing(*control));
                control->setFocus();
                EXPECT_EQ(hasRing(*control), control->isEnabled());
                ++stops;
            }
            EXPECT_GE(stops, each.stops);
            window.close();
            wait(0.1);
        }
    applyColorScheme(ColorScheme::Unknown);
}

TEST_F(AppearanceTest, ButtonsHaveOneHeightAndTheDefaultOneIsTheLast) {
    const AlertBox alert({"message", "text", {"Open", "OK"}}, atoms_, [](auto) {});
    alert.layout()->activate();
    const auto check = [](const QWidget& window) {
        const auto buttons = window.findChildren<QPushButton*>();
        for (const auto* each : buttons) {
            if (!each->isVisibleTo(&window)) continue;
            EXPECT_EQ(each->height(), controlHeight()) << each->text().toStdString();
            for (const auto* other : buttons)
                EXPECT_FALSE(each->isDefault() && other->parent() == each->parent() &&
                             other->y() == each->y() && other->x() > each->x());
        }
    };
    check(alert);
    QColorDialog colors;
    colors.setOption(QColorDialog::DontUseNativeDialog);
    colors.layout()->activate();
    check(colors);
    for (const auto& each : kPanels) {
        auto& window = open(each);
        if (auto* pencil = window.findChild<QToolButton*>("pencil")) pencil->click();
        desktop_test::OffscreenApplication::settle();
        check(window);
    }
}

}  // namespace
}  // namespace ui
