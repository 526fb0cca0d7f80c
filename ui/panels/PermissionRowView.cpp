#include "ui/panels/PermissionRowView.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/panels/FormParts.h"
#include "ui/widgets/Colors.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/Metrics.h"

namespace ui {

using orvellos::PermissionRow;

namespace {

constexpr int kSymbol = 18;
constexpr int kGap = 6;

int indent() {
    return scaled(kSymbol) + kGap;
}

}  // namespace

PermissionRowView::PermissionRowView(PermissionRow row) : row_(std::move(row)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addLayout(makeFirstLine());
    auto* text = makeSecondary(row_.texts().text);
    text->setContentsMargins(indent(), 0, 0, 0);
    column->addWidget(text);
    if (!row_.texts().hint.empty()) column->addWidget(makeHint());
    refresh();
}

QHBoxLayout* PermissionRowView::makeFirstLine() {
    auto* line = new QHBoxLayout;
    line->setSpacing(kGap);
    auto* grantedSymbol = makeSymbol(PermissionRow::kGrantedSymbol, kSymbol, grantedColor);
    auto* missingSymbol = makeSymbol(PermissionRow::kMissingSymbol, kSymbol, secondaryLabelColor);
    auto* title = inSize(makeText(row_.title()), font_scale::kBody, QFont::DemiBold);
    auto* granted = makeSecondary(PermissionRow::kGranted, QFont::Medium);
    granted->setWordWrap(false);
    auto* reload = makeButton(PermissionRow::kReload, &PermissionRow::reload);
    setHelp(*reload, PermissionRow::kReloadHelp);
    auto* request = makeButton(row_.texts().requestTitle, &PermissionRow::request);
    auto* openSettings = makeButton(PermissionRow::kOpenSettings, &PermissionRow::openSettings);
    whenGranted_ = {grantedSymbol, granted, reload};
    whenMissing_ = {missingSymbol, request, openSettings};
    line->addWidget(grantedSymbol);
    line->addWidget(missingSymbol);
    line->addWidget(title, 1);
    line->addWidget(granted);
    for (auto* button : {reload, request, openSettings}) line->addWidget(button);
    return line;
}

QWidget* PermissionRowView::makeHint() {
    auto* box = new QWidget;
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(indent(), 4, 0, 0);
    column->setSpacing(8);
    auto* hint = makeSecondary("");
    hint->setTextFormat(Qt::RichText);
    hint->setText(emphasized(row_.texts().hint));
    column->addWidget(hint);
    column->addWidget(makeButton(PermissionRow::kReveal, &PermissionRow::reveal), 0, Qt::AlignLeft);
    whenMissing_.push_back(box);
    return box;
}

// The rows' buttons have the same titles, so each also says whose it is.
QPushButton* PermissionRowView::makeButton(const std::string& title, Action action) {
    auto* button = makePushButton(title);
    button->setAccessibleName(toQString(title + ": " + row_.title()));
    connect(button, &QPushButton::clicked, this, [this, action] {
        (row_.*action)();
        refresh();
    });
    return button;
}

// A button that goes while it has the keyboard leaves that to the first one that comes.
void PermissionRowView::refresh() {
    const bool isGranted = row_.isGranted();
    auto& shown = isGranted ? whenGranted_ : whenMissing_;
    auto& hidden = isGranted ? whenMissing_ : whenGranted_;
    const auto* focused = focusWidget();
    const bool hadFocus = focused && focused->hasFocus();
    const auto isButton = [](QWidget* widget) { return qobject_cast<QPushButton*>(widget) != nullptr; };
    for (auto* widget : shown) widget->show();
    for (auto* widget : hidden) {
        const bool losesFocus = hadFocus && (widget == focused || widget->isAncestorOf(focused));
        if (losesFocus) (*std::ranges::find_if(shown, isButton))->setFocus();
        widget->hide();
    }
}

}  // namespace ui
