#include "ui/panels/WelcomeView.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "ui/panels/FormParts.h"
#include "ui/panels/PermissionRowView.h"
#include "ui/shell/ApplicationIcon.h"
#include "ui/widgets/Metrics.h"

namespace ui {

using orvellos::WelcomeForm;

namespace {

constexpr int kMargin = 32;
constexpr int kIcon = 64;
constexpr int kFeatureSymbol = 26;

QWidget* makeFeature(const WelcomeForm::Feature& feature) {
    auto* row = new QWidget;
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(16);
    line->addWidget(makeSymbol(feature.symbol, kFeatureSymbol, accentShapeColor), 0, Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(inSize(makeText(feature.title), font_scale::kBody, QFont::DemiBold));
    texts->addWidget(makeSecondary(feature.text));
    line->addLayout(texts, 1);
    return row;
}

QVBoxLayout* layOut(QWidget* page) {
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(18);
    return column;
}

}  // namespace

WelcomeView::WelcomeView(WelcomeForm& form) : form_(form), pages_(new QStackedWidget) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, 24, kMargin, 20);
    column->setSpacing(0);
    addHeader(*column);
    column->addSpacing(24);
    pages_->addWidget(makeFeaturesPage());
    pages_->addWidget(makePermissionsPage());
    column->addWidget(pages_);
    showStep();
    changes_ = form_.subscribe([this] {
        for (auto* row : rows_) row->refresh();
    });
}

void WelcomeView::addHeader(QVBoxLayout& column) {
    auto* icon = makeApplicationIcon(kIcon);
    auto* title = inSize(makeHeading(form_.title()), font_scale::kTitle, QFont::Bold);
    auto* subtitle = inSize(makeSecondary(form_.subtitle()), font_scale::kBody, QFont::Normal);
    for (auto* label : {icon, title, subtitle}) {
        label->setAlignment(Qt::AlignCenter);
        column.addWidget(label);
        column.addSpacing(label == icon ? 10 : label == title ? 4 : 0);
    }
}

QWidget* WelcomeView::makeFeaturesPage() {
    auto* page = new QWidget;
    auto* column = layOut(page);
    for (const auto& feature : WelcomeForm::kFeatures) column->addWidget(makeFeature(feature));
    column->addStretch();
    defaultButtons_.push_back(makeButton(WelcomeForm::kContinue, &WelcomeForm::continueToPermissions));
    column->addLayout(
        makeButtonRow({makeButton(WelcomeForm::kSkip, &WelcomeForm::finish)}, {defaultButtons_.back()}));
    return page;
}

QWidget* WelcomeView::makePermissionsPage() {
    auto* page = new QWidget;
    auto* column = layOut(page);
    auto* introduction = new QVBoxLayout;
    introduction->setSpacing(6);
    for (auto* label :
         {makeSymbol(WelcomeForm::kPermissionsSymbol, 40, accentShapeColor),
          makeHeading(WelcomeForm::kPermissionsHeading), makeSecondary(WelcomeForm::kPermissionsText)}) {
        label->setAlignment(Qt::AlignCenter);
        introduction->addWidget(label);
    }
    column->addLayout(introduction);
    column->addSpacing(6);
    for (const auto& row : form_.permissionRows()) {
        rows_.push_back(new PermissionRowView(row));
        column->addWidget(rows_.back());
    }
    auto* footnote = makeSecondary(WelcomeForm::kPermissionsFootnote);
    footnote->setAlignment(Qt::AlignCenter);
    column->addStretch();
    column->addWidget(footnote);
    defaultButtons_.push_back(makeButton(WelcomeForm::kTagFirstSpace, &WelcomeForm::tagMyFirstSpace));
    column->addLayout(
        makeButtonRow({makeButton(WelcomeForm::kBack, &WelcomeForm::back)},
                      {makeButton(WelcomeForm::kDone, &WelcomeForm::finish), defaultButtons_.back()}));
    return page;
}

QPushButton* WelcomeView::makeButton(std::string_view title, Action action) {
    auto* button = makePushButton(title);
    connect(button, &QPushButton::clicked, this, [this, action] {
        (form_.*action)();
        showStep();
    });
    return button;
}

// Finishing closes the window, which then is still there.
void WelcomeView::showStep() {
    const auto page = static_cast<int>(form_.step());
    pages_->setCurrentIndex(page);
    auto* button = defaultButtons_.at(static_cast<std::size_t>(page));
    button->setDefault(true);
    setFocusProxy(button);
    button->setFocus();
}

}  // namespace ui
