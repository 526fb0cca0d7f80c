#include "ui/widgets/ColorSwatches.h"

#include <QAccessibleWidget>
#include <QConicalGradient>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QRadioButton>
#include <QStyle>
#include <algorithm>
#include <array>

#include "orvellos/panels/CreateTagForm.h"
#include "orvellos/tags/TagColor.h"
#include "ui/widgets/Colors.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/Style.h"
#include "ui/widgets/Symbols.h"

namespace ui {

namespace {

constexpr double kDiameter = 26;
constexpr double kRing = 2;
constexpr double kAroundFill = 1;
constexpr int kSide = static_cast<int>(kDiameter + 2 * (kAroundFill + kRing + kFocusRoom));
static_assert(kSide == kDiameter + 2 * kAroundSwatch);
constexpr int kPitch = kSide - 2;  // of two neighbours only one can have the keyboard

bool isSameColor(std::string_view a, std::string_view b) {
    const auto first = orvellos::colorFromHex(a);
    return first && first == orvellos::colorFromHex(b);
}

QColor colorOf(const std::string& hex) {
    const auto color = orvellos::colorFromHex(hex);
    return color ? toQColor(*color) : kSystemBlue;
}

}  // namespace

// A filled circle, in a ring when it is the chosen one. Radio buttons bring the role along, and the space
// bar.
class ColorSwatch final : public QRadioButton {
  public:
    ColorSwatch(const QString& name, QWidget* parent) : QRadioButton(parent) {
        setAccessibleName(name);
        setToolTip(name);
        setFixedSize(kSide, kSide);
    }
    void setFill(const QBrush& fill) {
        fill_ = fill;
        update();
    }
    void setChosen(bool chosen) {
        setChecked(chosen);
        setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);  // Tab goes to the chosen one
        update();
    }

  protected:
    [[nodiscard]] bool hitButton(const QPoint& point) const override { return rect().contains(point); }
    // The arrow keys are the row's.
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() >= Qt::Key_Left && event->key() <= Qt::Key_Down)
            event->ignore();
        else
            QRadioButton::keyPressEvent(event);
    }
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QPointF center(width() / 2.0, height() / 2.0);
        const double radius = kDiameter / 2 - (isDown() ? 1.5 : 0);
        drawDot(painter, {center.x() - radius, center.y() - radius, 2 * radius, 2 * radius}, fill_,
                windowColor(palette()));
        const double around = kDiameter / 2 + kAroundFill + kRing / 2;
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(kSystemBlue, kRing));
        if (isChecked()) painter.drawEllipse(center, around, around);
        if (hasFocus()) drawFocusRing(painter, rect(), kSide / 2.0, palette());
    }

  private:
    QBrush fill_;
};

namespace {

// A swatch as assistive programs know it: a radio button with a value.
class AccessibleSwatch final : public QAccessibleWidget {
  public:
    explicit AccessibleSwatch(ColorSwatch& swatch)
        : QAccessibleWidget(&swatch, QAccessible::RadioButton), swatch_(swatch) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Value) return QAccessibleWidget::text(kind);
        return swatch_.isChecked() ? QStringLiteral("Selected") : QString();
    }
    [[nodiscard]] QAccessible::State state() const override {
        auto state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = swatch_.isChecked();
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override {
        return QStringList(toggleAction()) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name == toggleAction())
            swatch_.click();
        else
            QAccessibleWidget::doAction(name);
    }

  private:
    ColorSwatch& swatch_;
};

// The toolkit asks for every class that the object is of, and owns what it gets.
QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
    auto* swatch = className == QLatin1String("QRadioButton") ? dynamic_cast<ColorSwatch*>(object) : nullptr;
    return swatch ? new AccessibleSwatch(*swatch) : nullptr;
}

QBrush colorWheel() {
    QConicalGradient wheel(kSide / 2.0, kSide / 2.0, 90);
    constexpr int kSteps = 12;
    for (int i = 0; i <= kSteps; ++i)
        wheel.setColorAt(i / static_cast<double>(kSteps), QColor::fromHsv(i * 360 / kSteps % 360, 190, 245));
    return wheel;
}

}  // namespace

ColorSwatches::ColorSwatches(ColorPanel& colorPanel, const std::string& chosen,
                             std::function<void(const std::string&)> onChoose)
    : colorPanel_(colorPanel), chosen_(chosen), onChoose_(std::move(onChoose)) {
    QAccessible::installFactory(makeAccessible);
    for (const auto& color : orvellos::tagPalette) {
        auto* swatch = new ColorSwatch(toQString(orvellos::paletteName(color.hex)), this);
        swatch->setFill(colorOf(std::string(color.hex)));
        connect(swatch, &QRadioButton::clicked, this, [this, hex = std::string(color.hex)] { choose(hex); });
        swatches_.push_back(swatch);
    }
    custom_ = new ColorSwatch(toQString(orvellos::CreateTagForm::kCustomColorHelp), this);
    connect(custom_, &QRadioButton::clicked, this, [this] {
        colorPanel_.show(this, colorOf(chosen_),
                         [this](const QColor& color) { choose(orvellos::hexFromColor(toColor(color))); });
        showChoice();
    });
    setFixedSize(static_cast<int>(swatches_.size()) * kPitch + kSide, kSide);
    showChoice();
}

void ColorSwatches::resizeEvent(QResizeEvent* /*event*/) {
    int x = 0;
    const auto place = [&](QWidget& swatch) {
        swatch.setGeometry(QStyle::visualRect(layoutDirection(), rect(), {x, 0, kSide, kSide}));
        x += kPitch;
    };
    for (auto* swatch : swatches_) place(*swatch);
    place(*custom_);
}

void ColorSwatches::keyPressEvent(QKeyEvent* event) {
    const auto [left, right] = isRightToLeft() ? std::pair(1, -1) : std::pair(-1, 1);
    const int key = event->key();
    const int step = key == Qt::Key_Up      ? -1
                     : key == Qt::Key_Down  ? 1
                     : key == Qt::Key_Left  ? left
                     : key == Qt::Key_Right ? right
                                            : 0;
    if (step == 0) return QWidget::keyPressEvent(event);
    const auto count = std::ssize(swatches_);
    const auto next = std::ranges::find_if(swatches_, &QWidget::hasFocus) - swatches_.begin() + step;
    if (next < 0 || next > count) return;
    if (next == count) return custom_->setFocus(Qt::TabFocusReason);
    const auto index = static_cast<std::size_t>(next);
    choose(std::string(orvellos::tagPalette.at(index).hex));
    swatches_[index]->setFocus(Qt::TabFocusReason);
}

void ColorSwatches::choose(const std::string& colorHex) {
    chosen_ = colorHex;
    showChoice();
    onChoose_(colorHex);
}

void ColorSwatches::showChoice() {
    bool isInPalette = false;
    for (std::size_t i = 0; i < swatches_.size(); ++i) {
        const bool chosen = isSameColor(orvellos::tagPalette.at(i).hex, chosen_);
        swatches_[i]->setChosen(chosen);
        isInPalette = isInPalette || chosen;
    }
    custom_->setChosen(!isInPalette);
    custom_->setFill(isInPalette ? colorWheel() : QBrush(colorOf(chosen_)));
}

QHBoxLayout* makeRowAboveSwatches(QWidget* widget) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(kAroundSwatch, 0, 0, 0);
    row->addWidget(widget);
    return row;
}

}  // namespace ui
