#include "ui/panels/SettingsView.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>
#include <variant>

#include "ui/panels/FormParts.h"
#include "ui/panels/PermissionRowView.h"
#include "ui/widgets/Colors.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/SegmentedPicker.h"
#include "ui/widgets/ShortcutField.h"
#include "ui/widgets/Style.h"
#include "ui/widgets/Switch.h"

namespace ui {

using orvellos::GroupTitle;
using orvellos::PickerRow;
using orvellos::SettingsForm;
using orvellos::TextRow;
using orvellos::ToggleRow;

namespace {

constexpr int kMargin = 22;
constexpr int kBesideSwitch = static_cast<int>(kFocusRoom);  // lines the other controls up with its track
constexpr int kBetweenRows = 12;
constexpr int kBetweenSections = 22;

QLabel* makeFootnote(const std::string& text) {
    auto* footnote = makeSecondary("");
    footnote->setTextFormat(Qt::RichText);
    footnote->setText(emphasized(text));
    return footnote;
}

void showWarning(QLabel& label, const QString& text) {
    label.setText(text);
    label.setHidden(text.isEmpty());
}

}  // namespace

SettingsView::SettingsView(SettingsForm& form) : scroll_(makeScrollArea()) {
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll_);
    auto* rows = new QWidget;
    column_ = new QVBoxLayout(rows);
    column_->setContentsMargins(kMargin, kMargin - 4, kMargin - kBesideSwitch, kMargin);
    column_->setSpacing(4);
    for (const auto& section : form.sections()) {
        if (column_->count() > 0) column_->addSpacing(kBetweenSections);
        column_->addWidget(makeHeading(section.title));
        for (const auto& row : section.rows) std::visit([this](const auto& each) { add(each); }, row);
    }
    column_->addStretch();
    scroll_->setWidget(rows);
    rows->setAutoFillBackground(false);
    refresh();
    scroll_->setMinimumWidth(rows->minimumSizeHint().width() +
                             scroll_->verticalScrollBar()->sizeHint().width());
    changes_ = form.subscribe([this] { refresh(); });
}

void SettingsView::refresh() const {
    for (const auto& refresher : refreshers_) refresher();
}

void SettingsView::addControl(const std::string& title, QWidget* control, const std::string& footnote) {
    column_->addSpacing(kBetweenRows - column_->spacing());
    auto* line = new QHBoxLayout;
    line->addWidget(makeText(title), 1);
    line->addWidget(control);
    const bool isSwitch = dynamic_cast<const Switch*>(control) != nullptr;
    line->setContentsMargins(0, 0, isSwitch ? 0 : kBesideSwitch, 0);
    column_->addLayout(line);
    if (footnote.empty()) return;
    auto* label = makeFootnote(footnote);
    control->setAccessibleDescription(withoutEmphasis(footnote));
    column_->addWidget(label);
}

void SettingsView::add(const PickerRow& row) {
    QStringList options;
    for (const auto& option : row.options) options << toQString(option);
    auto* picker = new SegmentedPicker(toQString(row.title), options, row.choose);
    refreshers_.emplace_back([picker, selected = row.selected] { picker->setChosen(selected()); });
    addControl(row.title, picker, row.footnote);
}

void SettingsView::add(const ToggleRow& row) {
    auto* toggle = new Switch(toQString(row.title));
    connect(toggle, &QCheckBox::clicked, this, [this, set = row.set](bool on) {
        set(on);
        refresh();
    });
    refreshers_.emplace_back([toggle, isOn = row.isOn] { toggle->setChecked(isOn()); });
    addControl(row.title, toggle, row.footnote);
}

void SettingsView::add(const GroupTitle& row) {
    column_->addSpacing(kBetweenRows);
    column_->addWidget(makeSecondary(row.title, QFont::DemiBold));
}

void SettingsView::add(const TextRow& row) {
    column_->addSpacing(4);
    column_->addWidget(makeSecondary(row.text));
}

void SettingsView::add(const orvellos::ShortcutRow& row) {
    auto& recorder = *row.recorder;
    addControl(row.title, new ShortcutField(recorder, toQString(row.title)), "");
    auto* warning = makeSecondary("", QFont::Normal, warningColor);
    warning->setAlignment(Qt::AlignRight);
    column_->addWidget(warning);
    showWarning(*warning, toQString(recorder.warning()));
    recorders_.push_back(recorder.subscribe([this, warning, &recorder] {
        const auto text = toQString(recorder.warning());
        if (text == warning->text()) return;
        showWarning(*warning, text);
        // Once it has its place, it must not be out of sight.
        if (!text.isEmpty())
            QTimer::singleShot(0, warning,
                               [this, warning] { scroll_->ensureWidgetVisible(warning, 0, kMargin); });
    }));
}

void SettingsView::add(const orvellos::PermissionRow& row) {
    column_->addSpacing(kBetweenRows);
    auto* view = new PermissionRowView(row);
    view->setContentsMargins(0, 0, kBesideSwitch, 0);
    column_->addWidget(view);
    refreshers_.emplace_back([view] { view->refresh(); });
}

void SettingsView::add(const orvellos::WarningRow& row) {
    auto* box = new QWidget;
    auto* line = new QHBoxLayout(box);
    line->setContentsMargins(0, kBetweenRows, 0, 0);
    line->setSpacing(10);
    line->addWidget(makeSymbol(orvellos::WarningRow::kSymbol, 20, warningColor), 0, Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(makeSecondary(row.title, QFont::DemiBold, warningColor));
    texts->addWidget(makeSecondary(row.text));
    line->addLayout(texts, 1);
    column_->addWidget(box);
    refreshers_.emplace_back([box, isShown = row.isShown] { box->setVisible(isShown()); });
}

void SettingsView::add(const orvellos::ButtonsRow& row) {
    column_->addSpacing(kBetweenRows);
    auto* line = new QHBoxLayout;
    line->setSpacing(10);
    for (const auto& [title, action] : row.buttons) {
        auto* button = makePushButton(title);
        connect(button, &QPushButton::clicked, this, action);
        line->addWidget(button);
    }
    line->addStretch();
    column_->addLayout(line);
}

}  // namespace ui
