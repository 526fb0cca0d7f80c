#include "ui/SettingsView.h"

#include <QHBoxLayout>
#include <QRegularExpression>
#include <QScrollArea>
#include <QVBoxLayout>
#include <variant>

#include "ui/FormParts.h"
#include "ui/PlainText.h"
#include "ui/SegmentedPicker.h"
#include "ui/Switch.h"

namespace ui {

using orvellos::GroupTitle;
using orvellos::PickerRow;
using orvellos::SettingsForm;
using orvellos::TextRow;
using orvellos::ToggleRow;

namespace {

constexpr int kMargin = 22;
constexpr int kBetweenRows = 12;
constexpr int kBetweenSections = 22;

// What is between two asterisks each, in bold.
QString emphasized(const std::string& text) {
    static const QRegularExpression bold(QStringLiteral("\\*\\*(.+?)\\*\\*"));
    return toQString(text).toHtmlEscaped().replace(bold, QStringLiteral("<b>\\1</b>"));
}

QLabel* makeFootnote(const std::string& text) {
    auto* footnote = makeSecondary("");
    footnote->setTextFormat(Qt::RichText);
    footnote->setText(emphasized(text));
    return footnote;
}

}  // namespace

SettingsView::SettingsView(SettingsForm& form) {
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->viewport()->setAutoFillBackground(false);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll);
    auto* rows = new QWidget;
    column_ = new QVBoxLayout(rows);
    column_->setContentsMargins(kMargin, kMargin - 4, kMargin, kMargin);
    column_->setSpacing(4);
    for (const auto& section : form.sections()) {
        if (column_->count() > 0) column_->addSpacing(kBetweenSections);
        column_->addWidget(makeHeading(section.title));
        for (const auto& row : section.rows) std::visit([this](const auto& each) { add(each); }, row);
    }
    column_->addStretch();
    scroll->setWidget(rows);
    rows->setAutoFillBackground(false);
    refresh();
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
    column_->addLayout(line);
    if (footnote.empty()) return;
    auto* label = makeFootnote(footnote);
    control->setAccessibleDescription(label->text().remove(QRegularExpression(QStringLiteral("<[^>]*>"))));
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

}  // namespace ui
