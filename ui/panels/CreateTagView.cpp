#include "ui/panels/CreateTagView.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/panels/FormParts.h"
#include "ui/widgets/ColorSwatches.h"

namespace ui {

using orvellos::CreateTagForm;

CreateTagView::CreateTagView(CreateTagForm& form, ColorPanel& colorPanel) : form_(form) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24 - kAroundSwatch, 22, 24, 20);
    column->setSpacing(0);
    column->addLayout(makeRowAboveSwatches(makeHeading(CreateTagForm::kHeading)));
    column->addSpacing(4);
    column->addLayout(makeRowAboveSwatches(makeSecondary(CreateTagForm::kExplanation)));
    column->addSpacing(16);
    column->addLayout(makeRowAboveSwatches(makeField()));
    column->addSpacing(16);
    column->addLayout(makeRowAboveSwatches(makeSecondary(CreateTagForm::kColorCaption, QFont::DemiBold)));
    column->addSpacing(6);
    column->addWidget(makeColors(colorPanel));
    column->addStretch();
    column->addLayout(makeButtons());
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

QHBoxLayout* CreateTagView::makeButtons() {
    auto* cancel = makePushButton(CreateTagForm::kCancel);
    connect(cancel, &QPushButton::clicked, this, [this] { form_.cancel(); });
    create_ = makePushButton(CreateTagForm::kCreate);
    create_->setDefault(true);
    create_->setEnabled(form_.canCreate());
    connect(create_, &QPushButton::clicked, this, [this] { form_.submit(); });
    return makeButtonRow({}, {cancel, create_});
}

}  // namespace ui
