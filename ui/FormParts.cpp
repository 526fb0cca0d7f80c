#include "ui/FormParts.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QPushButton>
#include <QToolButton>
#include <functional>
#include <utility>

#include "orvellos/CreateTagForm.h"
#include "ui/PlainText.h"
#include "ui/Symbols.h"

namespace ui {

namespace {

// A label in a colour that is told anew when the palette changes.
class PaletteLabel final : public QLabel {
  public:
    explicit PaletteLabel(std::function<void(QLabel&)> color) : color_(std::move(color)) { color_(*this); }

  protected:
    void changeEvent(QEvent* event) override {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::PaletteChange) color_(*this);
    }

  private:
    std::function<void(QLabel&)> color_;
};

QLabel* styled(QLabel* label, std::string_view text, int pixels, QFont::Weight weight) {
    label->setText(toQString(text));
    label->setTextFormat(Qt::PlainText);
    return inSize(label, pixels, weight);
}

}  // namespace

QLabel* inSize(QLabel* label, int pixels, QFont::Weight weight) {
    auto font = label->font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    label->setFont(font);
    return label;
}

QLabel* makeHeading(std::string_view text) {
    return styled(new QLabel, text, 15, QFont::Bold);
}

QLabel* makeText(std::string_view text) {
    auto* label = styled(new QLabel, text, 13, QFont::Normal);
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
    return styled(label, text, 12, weight);
}

QLabel* makeSymbol(std::string_view name, int points, PaletteColor color) {
    return new PaletteLabel([name = std::string(name), points, color](QLabel& label) {
        label.setPixmap(
            symbolPixmap(name, color(QApplication::palette()), points, label.devicePixelRatioF()));
    });
}

QFont fixedFont(int size) {
    auto font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(size);
    return font;
}

QLineEdit* makeLabelField(const std::string& text) {
    auto* field = new QLineEdit(toQString(text));
    field->setMaxLength(kLongestLabel);
    field->setPlaceholderText(toQString(orvellos::CreateTagForm::kPlaceholder));
    field->setAccessibleName(QStringLiteral("Label"));
    field->setMinimumHeight(28);
    return field;
}

QPushButton* makePushButton(std::string_view title) {
    auto* button = new QPushButton(menuText(title));
    button->setAutoDefault(false);
    button->setMinimumSize(button->sizeHint().width() + 14, 28);
    return button;
}

QToolButton* makeSymbolButton(std::string_view symbol, std::string_view help) {
    auto* button = new QToolButton;
    button->setIcon(symbolIcon(symbol));
    button->setIconSize({16, 16});
    button->setFixedSize(26, 26);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    setHelp(*button, help);
    button->setAccessibleName(toQString(help));
    return button;
}

}  // namespace ui
