#include "ui/panels/EditTagsView.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "orvellos/tags/TagColor.h"
#include "ui/panels/FormParts.h"
#include "ui/panels/QtPanel.h"
#include "ui/shell/X11Window.h"
#include "ui/widgets/ColorSwatches.h"
#include "ui/widgets/Colors.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/Metrics.h"
#include "ui/widgets/Symbols.h"

namespace ui {

using orvellos::EditTagsList;
using orvellos::Tag;

namespace {

constexpr int kMargin = 20;
constexpr int kWidth = 460;
constexpr int kHighest = 520;
constexpr int kDot = 14;
const auto kEditorName = QStringLiteral("editor");
const auto kPencilName = QStringLiteral("pencil");

QWidget* makeFrame() {
    auto* frame = new QWidget;
    frame->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    return frame;
}

QWidget* makeWarning() {
    auto* warning = new QWidget;
    auto* row = new QHBoxLayout(warning);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(makeSymbol("exclamationmark.triangle", 13, warningColor));
    auto* text = makeSecondary(EditTagsList::kSpaceMissing, QFont::Normal, warningColor);
    text->setWordWrap(false);
    text->setAccessibleName(toQString(EditTagsList::kSpaceMissingLabel));
    row->addWidget(text);
    text->setAccessibleDescription(toQString(EditTagsList::kSpaceMissingHelp));
    setHelp(*warning, EditTagsList::kSpaceMissingHelp);
    return warning;
}

}  // namespace

EditTagsView::EditTagsView(EditTagsList& list, ColorPanel& colorPanel, const platform::x11::Atoms& atoms)
    : list_(list), colorPanel_(colorPanel), atoms_(atoms) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeTop());
    scroll_ = makeScrollArea();
    column->addWidget(scroll_);
    shown_ = present();
    fill();
    changes_ = list_.subscribe([this] { follow(); });
}

QSize EditTagsView::sizeHint() const {
    const int rows = scroll_->widget()->sizeHint().height();
    const int top = layout()->itemAt(0)->sizeHint().height();
    return {scaled(kWidth), std::min({top + rows, scaled(kHighest), roomOn(screen()).height()})};
}

EditTagsView::Shown EditTagsView::present() const {
    const auto& buffer = list_.editBuffer();
    return {list_.rows(), buffer ? std::optional(buffer->id) : std::nullopt};
}

void EditTagsView::follow() {
    auto now = present();
    if (now == shown_) return;
    shown_ = std::move(now);
    fill();
}

QWidget* EditTagsView::makeTop() {
    auto* top = new QWidget;
    auto* row = new QHBoxLayout(top);
    row->setContentsMargins(kMargin, 18, kMargin - 4, 10);
    row->addWidget(makeHeading(EditTagsList::kHeading));
    count_ = makeSecondary("");
    row->addWidget(count_);
    row->addStretch();
    auto* settings = makeSymbolButton("gearshape", EditTagsList::kSettingsHelp);
    connect(settings, &QToolButton::clicked, this, [this] { list_.showSettings(); });
    row->addWidget(settings);
    return top;
}

void EditTagsView::fill() {
    const auto focus = focusNow();
    const int position = scroll_->verticalScrollBar() ? scroll_->verticalScrollBar()->value() : 0;
    auto* rows = new QWidget;
    auto* column = new QVBoxLayout(rows);
    column->setContentsMargins(kMargin - kAroundSwatch, 0, kMargin - 4, kMargin - 6);
    column->setSpacing(2);
    rowWidgets_.clear();
    for (const auto& row : shown_.rows) {
        rowWidgets_.push_back(row.tag.id == shown_.edited ? makeEditor() : makeRow(row));
        column->addWidget(rowWidgets_.back());
    }
    if (shown_.rows.empty()) column->addWidget(makeEmptyState());
    column->addStretch();
    count_->setText(toQString(list_.countText()));
    count_->setVisible(!shown_.rows.empty());
    // The button that set off the change may be one of the former rows'.
    if (auto* former = scroll_->takeWidget()) former->deleteLater();
    scroll_->setWidget(rows);
    rows->setAutoFillBackground(false);
    scroll_->verticalScrollBar()->setValue(position);
    scroll_->setMinimumWidth(rows->minimumSizeHint().width() +
                             scroll_->verticalScrollBar()->sizeHint().width());
    giveFocus(focus);
    updateGeometry();
    fitPanel();
}

// The panel is as high as the rows until the user has made it higher or lower.
void EditTagsView::fitPanel() {
    const int former = std::exchange(fittingHeight_, sizeHint().height());
    auto* panel = window();
    if (panel == this || !panel->isVisible()) return;
    const int least = panel->minimumHeight();
    if (panel->height() == std::max(least, former))
        panel->resize(panel->width(), std::max(least, fittingHeight_));
}

// After the first click of a double click the next row is under the pointer.
bool EditTagsView::eventFilter(QObject* object, QEvent* event) {
    return event->type() == QEvent::MouseButtonDblClick || QWidget::eventFilter(object, event);
}

EditTagsView::Focus EditTagsView::focusNow() const {
    const auto* focused = focusWidget();
    for (std::size_t row = 0; focused && row < rowWidgets_.size(); ++row) {
        if (!rowWidgets_[row]->isAncestorOf(focused)) continue;
        const auto* field = qobject_cast<const QLineEdit*>(focused);
        return {row, focused->objectName(), field ? field->cursorPosition() : 0};
    }
    return {};
}

// A row that has just become an editor has its whole label selected, and gives the keyboard back to its
// pencil; where a row is gone the next one follows. Else everything is as it was.
void EditTagsView::giveFocus(Focus focus) {
    if (auto* field = scroll_->widget()->findChild<QLineEdit*>(kEditorName)) {
        field->setFocus();
        // Once the row has its place, it must not be out of sight.
        QTimer::singleShot(0, field, [this, field] {
            for (auto* part : {field->parentWidget(), static_cast<QWidget*>(field)})
                scroll_->ensureWidgetVisible(part, 0, 0);
        });
        if (focus.part == kEditorName)
            field->setCursorPosition(focus.cursor);
        else
            field->selectAll();
        return;
    }
    if (focus.part.isEmpty() || rowWidgets_.empty()) return;
    if (focus.part == kEditorName) focus.part = kPencilName;
    auto* row = rowWidgets_[std::min(focus.row, rowWidgets_.size() - 1)];
    if (auto* part = row->findChild<QWidget*>(focus.part)) part->setFocus();
}

// Escape ends the editing of a row before it closes the panel.
void EditTagsView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && list_.editBuffer())
        list_.cancelEdit();
    else
        QWidget::keyPressEvent(event);
}

QWidget* EditTagsView::makeEmptyState() const {
    auto* state = makeFrame();
    auto* column = new QVBoxLayout(state);
    column->setContentsMargins(0, 28, 0, 34);
    for (auto* label : {makeHeading(EditTagsList::kNoTags), makeSecondary(EditTagsList::kHowToTag)}) {
        label->setAlignment(Qt::AlignCenter);
        column->addWidget(label);
    }
    return state;
}

QWidget* EditTagsView::makeRow(const Row& row) {
    const auto& tag = row.tag;
    auto* frame = makeFrame();
    auto* line = new QHBoxLayout(frame);
    line->setContentsMargins(kAroundSwatch, 3, 0, 3);
    line->setSpacing(2);
    line->addWidget(makeDot(toQColor(orvellos::tagColor(tag)), kDot));
    line->addSpacing(8);
    auto* label = new ElidedLabel(toQString(tag.label));
    line->addWidget(label, 1);
    line->addSpacing(8);
    if (row.isActiveHere) {
        auto* here = makeSecondary(EditTagsList::kActiveHere);
        here->setWordWrap(false);
        line->addWidget(here);
    }
    if (row.isSpaceMissing) line->addWidget(makeWarning());
    line->addSpacing(4);
    const auto add = [&](std::string_view symbol, std::string_view help, const std::string& name,
                         auto action) {
        auto* button = makeSymbolButton(symbol, help);
        button->setAccessibleName(toQString(name));
        button->setObjectName(toQString(symbol));
        connect(button, &QToolButton::clicked, this, [action, id = tag.id] { action(id); });
        line->addWidget(button);
        return button;
    };
    add("pencil", EditTagsList::kEditHelp, EditTagsList::editLabel(tag),
        [this](const auto& id) { list_.edit(id); });
    add("arrow.right.circle", EditTagsList::kJumpHelp, EditTagsList::jumpLabel(tag),
        [this](const auto& id) { list_.jump(id); });
    line->addWidget(makePositionButton(tag));
    auto* trash = add("trash", EditTagsList::kDeleteHelp, EditTagsList::deleteLabel(tag),
                      [this](const auto& id) { list_.remove(id); });
    trash->installEventFilter(this);
    return frame;
}

QToolButton* EditTagsView::makePositionButton(const Tag& tag) {
    auto* button = makeSymbolButton("ellipsis.circle", EditTagsList::kPositionHelp);
    button->setAccessibleName(toQString(EditTagsList::positionLabel(tag)));
    button->setObjectName(QStringLiteral("position"));
    button->setPopupMode(QToolButton::InstantPopup);
    auto* menu = new QMenu(button);
    const auto add = [&](std::string_view symbol, std::string_view title, auto action) {
        menu->addAction(symbolIcon(symbol), toQString(title), this, [action, id = tag.id] { action(id); });
    };
    add("arrow.down.to.line", EditTagsList::kReassign, [this](const auto& id) { list_.reassign(id); });
    add("dot.scope", EditTagsList::kAlignAll, [this](const auto& id) { list_.alignAll(id); });
    add("link", EditTagsList::kRelink, [this](const auto& id) { list_.relink(id); });
    connect(menu, &QMenu::aboutToShow, menu,
            [this, menu] { setWindowType(*menu, atoms_, platform::x11::Atom::NetWmWindowTypeDropdownMenu); });
    button->setMenu(menu);
    return button;
}

QWidget* EditTagsView::makeEditor() {
    auto* frame = makeFrame();
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 6, 4, 10);
    column->setSpacing(8);
    const auto& buffer = *list_.editBuffer();
    auto* field = makeLabelField(buffer.label);
    field->setObjectName(kEditorName);
    column->addLayout(makeRowAboveSwatches(field));
    column->addWidget(new ColorSwatches(colorPanel_, buffer.colorHex, [this](const std::string& colorHex) {
        if (list_.editBuffer()) list_.editBuffer()->colorHex = colorHex;
    }));
    auto* save = makePushButton(EditTagsList::kSave);
    save->setDefault(true);
    connect(save, &QPushButton::clicked, this, [this] { list_.save(); });
    auto* cancel = makePushButton(EditTagsList::kCancel);
    connect(cancel, &QPushButton::clicked, this, [this] { list_.cancelEdit(); });
    connect(field, &QLineEdit::textChanged, this, [this, save](const QString& text) {
        if (list_.editBuffer()) list_.editBuffer()->label = text.toStdString();
        save->setEnabled(list_.canSave());
    });
    column->addLayout(makeButtonRow({}, {cancel, save}));
    return frame;
}

}  // namespace ui
