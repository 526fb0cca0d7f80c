#include "ui/panels/AlertBox.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/panels/FormParts.h"
#include "ui/shell/ApplicationIcon.h"
#include "ui/shell/X11Window.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/Metrics.h"

namespace ui {

namespace {

constexpr int kTextWidth = 380;
constexpr int kSymbol = 40;

}  // namespace

AlertBox::AlertBox(const platform::Alert& alert, const platform::x11::Atoms& atoms,
                   std::function<void(std::size_t)> answered)
    : answer_(alert.buttons.size() - 1) {
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                   Qt::WindowStaysOnTopHint);
    setWindowTitle(QStringLiteral("orvellos"));
    setWindowIcon(applicationIcon());
    setAccessibleName(toQString(alert.message));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::ApplicationModal);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(22, 22, 24, 18);
    row->setSpacing(18);
    row->setSizeConstraint(QLayout::SetFixedSize);
    const bool warns = alert.style == platform::Alert::Style::Warning;
    row->addWidget(warns ? makeSymbol("exclamationmark.triangle", kSymbol, warningColor)
                         : makeSymbol("info.circle", kSymbol, secondaryLabelColor),
                   0, Qt::AlignTop);
    auto* column = new QVBoxLayout;
    column->setSpacing(8);
    auto* message = makeHeading(alert.message);
    auto* text = makeText(alert.informativeText);
    for (auto* label : {message, text}) {
        label->setWordWrap(true);
        label->setFixedWidth(scaled(kTextWidth));
        column->addWidget(label);
    }
    column->addSpacing(8);
    column->addLayout(makeButtons(alert));
    row->addLayout(column);
    putOnEveryDesktop(*this, atoms);
    connect(this, &QDialog::finished, this, [this, answered = std::move(answered)] { answered(answer_); });
}

// The first button is the default one. Return presses the one that has the keyboard.
QHBoxLayout* AlertBox::makeButtons(const platform::Alert& alert) {
    std::vector<QPushButton*> buttons;
    for (std::size_t i = alert.buttons.size(); i-- > 0;) {
        auto* button = makePushButton(alert.buttons[i]);
        button->setAutoDefault(true);
        button->setDefault(i == 0);
        connect(button, &QPushButton::clicked, this, [this, i] {
            answer_ = i;
            accept();
        });
        buttons.push_back(button);
        if (i == 0) button->setFocus();
    }
    return makeButtonRow({}, buttons);
}

}  // namespace ui
