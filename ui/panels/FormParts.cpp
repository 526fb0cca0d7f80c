#include "ui/panels/FormParts.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>
#include <functional>
#include <utility>

#include "orvellos/panels/CreateTagForm.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/Metrics.h"
#include "ui/widgets/Style.h"
#include "ui/widgets/Symbols.h"

namespace ui {

namespace {

constexpr int kBetweenButtons = 8;

// A label in a colour that is told anew when the palette changes.
class PaletteLabel final : public QLabel {
  public:
    explicit PaletteLabel(std::function<void(QLabel&)> color) : color_(std::move(color)) { color_(*this); }

  protected:
    void changeEvent(QEvent* event) override {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::PaletteChange) color_(*this);
    }
    // One whose text can be selected can have the keyboard.
    void paintEvent(QPaintEvent* event) override {
        QLabel::paintEvent(event);
        if (!hasFocus()) return;
        QPainter painter(this);
        drawFocusRing(painter, rect(), kCorner, QApplication::palette());
    }

  private:
    std::function<void(QLabel&)> color_;
};

QLabel* styled(QLabel* label, std::string_view text, double factor, QFont::Weight weight) {
    label->setText(toQString(text));
    label->setTextFormat(Qt::PlainText);
    return inSize(label, factor, weight);
}

}  // namespace

QLabel* inSize(QLabel* label, double factor, QFont::Weight weight) {
    label->setFont(scaledFont(factor, weight));
    return label;
}

QLabel* makeHeading(std::string_view text) {
    return styled(new QLabel, text, font_scale::kHeading, QFont::Bold);
}

QLabel* makeText(std::string_view text) {
    auto* label = styled(new QLabel, text, font_scale::kBody, QFont::Normal);
    label->setWordWrap(true);
    return label;
}

QLabel* makeSecondary(std::string_view text, QFont::Weight weight, PaletteColor color) {
    auto* label = new PaletteLabel([color](QLabel& colored) {
        auto palette = QApplication::palette();
        palette.setColor(QPalette::WindowText, color(palette));
        colored.setPalette(palette);
    });
    label->setWordWrap(true);
    return styled(label, text, font_scale::kSecondary, weight);
}

QLabel* makeSymbol(std::string_view name, int points, PaletteColor color) {
    return new PaletteLabel([name = std::string(name), points, color](QLabel& label) {
        label.setPixmap(
            symbolPixmap(name, color(QApplication::palette()), scaled(points), label.devicePixelRatioF()));
    });
}

QLabel* makeDot(const QColor& fill, int points) {
    return new PaletteLabel([fill, points](QLabel& label) {
        label.setPixmap(dotOnGround(fill, windowColor(QApplication::palette()), scaled(points),
                                    label.devicePixelRatioF()));
    });
}

QScrollArea* makeScrollArea(QWidget* content) {
    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->viewport()->setAutoFillBackground(false);
    if (!content) return area;
    area->setWidget(content);
    content->setAutoFillBackground(false);
    return area;
}

QLineEdit* makeLabelField(const std::string& text) {
    auto* field = new QLineEdit(toQString(text));
    field->setMaxLength(kLongestLabel);
    field->setPlaceholderText(toQString(orvellos::CreateTagForm::kPlaceholder));
    field->setAccessibleName(QStringLiteral("Label"));
    return field;
}

QPushButton* makePushButton(std::string_view title) {
    auto* button = new QPushButton(menuText(title));
    button->setAutoDefault(false);
    return button;
}

QHBoxLayout* makeButtonRow(const std::vector<QPushButton*>& atStart, const std::vector<QPushButton*>& atEnd) {
    auto* row = new QHBoxLayout;
    row->setSpacing(kBetweenButtons);
    for (auto* button : atStart) row->addWidget(button);
    row->addStretch();
    for (auto* button : atEnd) row->addWidget(button);
    return row;
}

QToolButton* makeSymbolButton(std::string_view symbol, std::string_view help) {
    auto* button = new QToolButton;
    button->setIcon(symbolIcon(symbol));
    button->setIconSize({scaled(16), scaled(16)});
    button->setFixedSize(controlHeight(), controlHeight());
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    setHelp(*button, help);
    button->setAccessibleName(toQString(help));
    return button;
}

}  // namespace ui
