#include "ui/panels/QuickSwitcherView.h"

#include <QAbstractListModel>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QScrollBar>
#include <QStackedLayout>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QVBoxLayout>
#include <optional>

#include "orvellos/tags/TagColor.h"
#include "platform/Keys.h"
#include "ui/panels/FormParts.h"
#include "ui/widgets/Colors.h"
#include "ui/widgets/Labels.h"
#include "ui/widgets/Metrics.h"
#include "ui/widgets/Symbols.h"

namespace ui {

using orvellos::MenuSpaceRow;
using orvellos::QuickSwitcher;

namespace {

constexpr int kRowHeight = 34;
constexpr int kRowPadding = 6;
constexpr int kInset = 12;
constexpr int kDot = 12;
constexpr int kCheckmark = 14;
constexpr int kGap = 10;
constexpr int kScrollTime = 120;  // milliseconds

std::optional<std::uint16_t> virtualKeyCode(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Return:
            return platform::key::kReturn;
        case Qt::Key_Enter:
            return platform::key::kKeypadEnter;
        case Qt::Key_Up:
            return platform::key::kUpArrow;
        case Qt::Key_Down:
            return platform::key::kDownArrow;
        case Qt::Key_Escape:
            return platform::key::kEscape;
        default:
            return std::nullopt;
    }
}

// One row: the tag's colour and label, the desktop's number, and a checkmark on the current one.
class RowPainter final : public QStyledItemDelegate {
  public:
    RowPainter(const QuickSwitcher& switcher, QObject* parent)
        : QStyledItemDelegate(parent), switcher_(switcher) {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& /*index*/) const override {
        return {0, std::max(scaled(kRowHeight), option.fontMetrics.height() + 2 * kRowPadding)};
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const auto& row = switcher_.filteredRows().at(static_cast<std::size_t>(index.row()));
        const bool selected = (option.state & QStyle::State_Selected) != 0;
        const auto& palette = option.palette;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (selected) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(accentColor(palette));
            painter->drawRoundedRect(option.rect, 6, 6);
        }
        const auto ground = selected ? accentColor(palette) : windowColor(palette);
        paintRow(*painter, option, row, {ground, selected ? onAccentColor(palette) : labelColor(palette)});
        painter->restore();
    }
    // The whole label, where it is cut off.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        QString toolTip;
        if (event->type() == QEvent::ToolTip && index.isValid()) {
            const auto& row = switcher_.filteredRows().at(static_cast<std::size_t>(index.row()));
            const int width = titleArea(option.rect, row).width();
            const auto label = row.tag ? toQString(row.tag->label) : QString();
            if (QFontMetrics(option.font).horizontalAdvance(label) > width) toolTip = cutOffToolTip(label);
        }
        QToolTip::showText(event->globalPos(), toolTip, view);
        return true;
    }

  private:
    [[nodiscard]] static int desktopWidth(const MenuSpaceRow& row) {
        return QFontMetrics(fixedFont(font_scale::kSecondary))
            .horizontalAdvance(toQString(QuickSwitcher::desktopText(row)));
    }
    // Where the label is when texts run from left to right.
    [[nodiscard]] static QRect titleArea(const QRect& row, const MenuSpaceRow& space) {
        return row.adjusted(kInset + scaled(kDot) + kGap, 0,
                            -kInset - scaled(kCheckmark) - kGap - desktopWidth(space) - kGap, 0);
    }
    struct Colors {
        QColor ground;
        QColor text;
        // As faint as can be read.
        [[nodiscard]] QColor faint() const {
            auto color = text;
            color.setAlphaF(0.62F);
            return legible(ground, color, kTextContrast);
        }
    };

    static void paintRow(QPainter& painter, const QStyleOptionViewItem& option, const MenuSpaceRow& row,
                         const Colors& colors) {
        auto rest = paintSymbols(painter, option, row, colors);
        const bool mirrored = option.direction == Qt::RightToLeft;
        const auto draw = [&](bool atEnd, const QString& text) {
            const auto side = atEnd == mirrored ? Qt::AlignLeft : Qt::AlignRight;
            painter.drawText(
                QStyle::visualRect(option.direction, option.rect, rest),
                static_cast<int>(side) | Qt::AlignVCenter | Qt::TextSingleLine | Qt::AlignAbsolute, text);
        };
        const auto desktop = toQString(QuickSwitcher::desktopText(row));
        painter.setFont(fixedFont(font_scale::kSecondary));
        painter.setPen(colors.faint());
        draw(true, desktop);
        rest = titleArea(option.rect, row);
        painter.setFont(option.font);
        painter.setPen(row.tag ? colors.text : colors.faint());
        draw(false, painter.fontMetrics().elidedText(toQString(QuickSwitcher::title(row)), Qt::ElideRight,
                                                     rest.width()));
    }

    // What they leave of the row.
    static QRect paintSymbols(QPainter& painter, const QStyleOptionViewItem& option, const MenuSpaceRow& row,
                              const Colors& colors) {
        auto rest = option.rect.adjusted(kInset, 0, -kInset, 0);
        const auto centred = [&](int x, int size) {
            return QStyle::visualRect(option.direction, option.rect,
                                      {x, rest.center().y() - size / 2 + 1, size, size});
        };
        const int dot = scaled(kDot);
        const int checkmark = scaled(kCheckmark);
        if (row.tag)
            drawDot(painter, centred(rest.left(), dot), toQColor(orvellos::tagColor(*row.tag)),
                    colors.ground);
        if (row.isActive)
            painter.drawPixmap(
                centred(rest.right() - checkmark, checkmark),
                symbolPixmap("checkmark", colors.text, checkmark, painter.device()->devicePixelRatioF()));
        return rest.adjusted(dot + kGap, 0, -checkmark - kGap, 0);
    }

    const QuickSwitcher& switcher_;
};

}  // namespace

// The rows as the list sees them.
class SpaceRows final : public QAbstractListModel {
  public:
    SpaceRows(const QuickSwitcher& switcher, QObject* parent)
        : QAbstractListModel(parent), switcher_(switcher) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(switcher_.filteredRows().size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        const auto& rows = switcher_.filteredRows();
        if (!index.isValid() || static_cast<std::size_t>(index.row()) >= rows.size()) return {};
        const auto& row = rows[static_cast<std::size_t>(index.row())];
        if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
            return toQString(QuickSwitcher::accessibilityLabel(row));
        if (role == Qt::AccessibleDescriptionRole) return toQString(QuickSwitcher::kRowHint);
        return {};
    }
    // The switcher's rows are others now.
    void reset() {
        beginResetModel();
        endResetModel();
    }

  private:
    const QuickSwitcher& switcher_;
};

QuickSwitcherView::QuickSwitcherView(QuickSwitcher& switcher) : switcher_(switcher) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 14, 14, 10);
    column->setSpacing(8);
    column->addWidget(makeSearch());
    auto* below = new QWidget;
    stack_ = new QStackedLayout(below);
    stack_->addWidget(makeList());
    stack_->addWidget(makeEmptyState());
    column->addWidget(below, 1);
    setFocusProxy(field_);
    showRows();
    shownAgain_ = switcher_.subscribe([this] {
        showRows();
        field_->selectAll();
    });
}

QWidget* QuickSwitcherView::makeSearch() {
    auto* search = new QWidget;
    auto* row = new QHBoxLayout(search);
    row->setContentsMargins(kInset, 4, kInset, 4);
    row->setSpacing(kGap);
    row->addWidget(makeSymbol("magnifyingglass", 18, secondaryLabelColor));
    field_ = new QLineEdit;
    field_->setFrame(false);
    field_->setPlaceholderText(toQString(QuickSwitcher::kPlaceholder));
    field_->setAccessibleName(toQString(QuickSwitcher::kPlaceholder));
    field_->setFont(scaledFont(font_scale::kSearch));
    QPalette clear;
    clear.setColor(QPalette::Base, Qt::transparent);
    field_->setPalette(clear);
    field_->installEventFilter(this);
    connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) {
        switcher_.setQuery(text.toStdString());
        showRows();
    });
    row->addWidget(field_, 1);
    return search;
}

QWidget* QuickSwitcherView::makeList() {
    list_ = new QListView;
    list_->setFrameShape(QFrame::NoFrame);
    list_->viewport()->setAutoFillBackground(false);
    list_->setFocusPolicy(Qt::NoFocus);
    list_->setUniformItemSizes(true);
    list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    rows_ = new SpaceRows(switcher_, list_);
    list_->setModel(rows_);
    list_->setItemDelegate(new RowPainter(switcher_, list_));
    scrolling_.setTargetObject(list_->verticalScrollBar());
    scrolling_.setPropertyName("value");
    scrolling_.setDuration(kScrollTime);
    scrolling_.setEasingCurve(QEasingCurve::OutCubic);
    connect(list_, &QListView::clicked, this, [this](const QModelIndex& index) {
        switcher_.jump(MenuSpaceRow(switcher_.filteredRows().at(static_cast<std::size_t>(index.row()))));
    });
    // The mouse moves the highlight with any button, and also when it lets go of it elsewhere.
    connect(list_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid()) switcher_.select(static_cast<std::size_t>(current.row()));
            });
    return list_;
}

QWidget* QuickSwitcherView::makeEmptyState() {
    auto* state = new QWidget;
    auto* column = new QVBoxLayout(state);
    column->addStretch();
    column->addWidget(makeSymbol("tag.slash", 32, tertiaryLabelColor), 0, Qt::AlignHCenter);
    emptyText_ = makeSecondary("");
    emptyText_->setAlignment(Qt::AlignCenter);
    column->addWidget(emptyText_);
    column->addStretch();
    return state;
}

void QuickSwitcherView::showRows() {
    rows_->reset();
    const bool isEmpty = switcher_.filteredRows().empty();
    emptyText_->setText(toQString(switcher_.emptyText()));
    stack_->setCurrentIndex(isEmpty ? 1 : 0);
    if (!isEmpty) showSelection(false);
}

// The list's own scrolling jumps.
void QuickSwitcherView::showSelection(bool animated) {
    auto* bar = list_->verticalScrollBar();
    scrolling_.stop();
    const int before = bar->value();
    const auto index = rows_->index(static_cast<int>(switcher_.selectedIndex()));
    list_->setCurrentIndex(index);
    list_->scrollTo(index);
    const int after = bar->value();
    if (!animated || before == after) return;
    bar->setValue(before);
    scrolling_.setStartValue(before);
    scrolling_.setEndValue(after);
    scrolling_.start();
}

void QuickSwitcherView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!switcher_.filteredRows().empty()) showSelection(false);
}

// The keys of the list, which go to the field.
bool QuickSwitcherView::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(object, event);
    const auto keyCode = virtualKeyCode(static_cast<const QKeyEvent&>(*event));
    if (!keyCode || !switcher_.keyDown(*keyCode)) return QWidget::eventFilter(object, event);
    if (!switcher_.filteredRows().empty()) showSelection(true);
    return true;
}

}  // namespace ui
