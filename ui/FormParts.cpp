#include "ui/FormParts.h"

#include <QToolButton>

#include "orvellos/CreateTagForm.h"
#include "ui/PlainText.h"
#include "ui/QtColor.h"
#include "ui/Symbols.h"

namespace ui {

namespace {

QLabel* makeLabel(std::string_view text, int pixels, QFont::Weight weight) {
    auto* label = new QLabel(toQString(text));
    label->setTextFormat(Qt::PlainText);
    auto font = label->font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    label->setFont(font);
    return label;
}

}  // namespace

QLabel* makeHeading(std::string_view text) {
    return makeLabel(text, 15, QFont::Bold);
}

QLabel* makeText(std::string_view text) {
    auto* label = makeLabel(text, 13, QFont::Normal);
    label->setWordWrap(true);
    return label;
}

QLabel* makeSecondary(std::string_view text, QFont::Weight weight) {
    auto* label = makeLabel(text, 12, weight);
    auto palette = label->palette();
    palette.setColor(QPalette::WindowText, secondaryLabelColor(palette));
    label->setPalette(palette);
    label->setWordWrap(true);
    return label;
}

QLineEdit* makeLabelField(const std::string& text) {
    auto* field = new QLineEdit(toQString(text));
    field->setMaxLength(kLongestLabel);
    field->setPlaceholderText(toQString(orvellos::CreateTagForm::kPlaceholder));
    field->setAccessibleName(QStringLiteral("Label"));
    field->setMinimumHeight(28);
    return field;
}

QToolButton* makeSymbolButton(std::string_view symbol, std::string_view help) {
    auto* button = new QToolButton;
    button->setIcon(symbolIcon(symbol, button->palette(), button->devicePixelRatioF()));
    button->setIconSize({16, 16});
    button->setFixedSize(26, 26);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setToolTip(toolTipText(help));
    button->setAccessibleName(toQString(help));
    return button;
}

}  // namespace ui
