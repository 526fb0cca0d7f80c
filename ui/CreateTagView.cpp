#include "ui/CreateTagView.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/ColorSwatches.h"
#include "ui/FormParts.h"
#include "ui/PlainText.h"

namespace ui {

using orvellos::CreateTagForm;

CreateTagView::CreateTagView(CreateTagForm& form, ColorPanel& colorPanel) : form_(form) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 22, 24, 20);
    column->setSpacing(0);
    column->addWidget(makeHeading(CreateTagForm::kHeading));
    column->addSpacing(4);
    column->addWidget(makeSecondary(CreateTagForm::kExplanation));
    column->addSpacing(16);
    column->addWidget(makeField());
    column->addSpacing(16);
    column->addWidget(makeSecondary(CreateTagForm::kColorCaption, QFont::DemiBold));
    column->addSpacing(6);
    column->addWidget(makeColors(colorPanel));
    column->addStretch();
    column->addWidget(makeButtons());
    setFocusProxy(field_);
}

QWidget* CreateTagView::makeField() {
    field_ = makeLabelField(form_.label);
    connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) {
        form_.label = text.toStdString();
        create_->setEnabled(form_.canCreate());
    });
    return field_;
}

QWidget* CreateTagView::makeColors(ColorPanel& colorPanel) {
    return new ColorSwatches(colorPanel, form_.colorHex,
                             [this](const std::string& colorHex) { form_.colorHex = colorHex; });
}

QWidget* CreateTagView::makeButtons() {
    auto* buttons = new QWidget;
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    auto* cancel = new QPushButton(toQString(CreateTagForm::kCancel));
    connect(cancel, &QPushButton::clicked, this, [this] { form_.cancel(); });
    create_ = new QPushButton(toQString(CreateTagForm::kCreate));
    create_->setDefault(true);
    create_->setEnabled(form_.canCreate());
    connect(create_, &QPushButton::clicked, this, [this] { form_.submit(); });
    row->addStretch();
    row->addWidget(cancel);
    row->addWidget(create_);
    return buttons;
}

}  // namespace ui
