#include "ui/widgets/SegmentedPicker.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>
#include <QRadioButton>
#include <algorithm>

#include "ui/widgets/Colors.h"
#include "ui/widgets/Metrics.h"
#include "ui/widgets/Style.h"

namespace ui {

namespace {

constexpr int kPadding = 14;
constexpr int kLeast = 44;

}  // namespace

// One choice. Radio buttons bring the keys and the role along.
class Segment final : public QRadioButton {
  public:
    Segment(const QString& text, bool isFirst, bool isLast)
        : QRadioButton(text), isFirst_(isFirst), isLast_(isLast) {}
    [[nodiscard]] QSize sizeHint() const override {
        return {std::max(fontMetrics().horizontalAdvance(text()) + 2 * scaled(kPadding), scaled(kLeast)),
                controlHeight()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    // A group of radio buttons does not give up its only choice otherwise.
    void setChosen(bool chosen) {
        setAutoExclusive(false);
        setChecked(chosen);
        setAutoExclusive(true);
        update();
    }

  protected:
    [[nodiscard]] bool hitButton(const QPoint& point) const override { return rect().contains(point); }
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const bool roundLeft = layoutDirection() == Qt::RightToLeft ? isLast_ : isFirst_;
        const bool roundRight = layoutDirection() == Qt::RightToLeft ? isFirst_ : isLast_;
        const auto box = QRectF(rect()).adjusted(0.5, 0.5, roundRight ? -0.5 : 0.5, -0.5);
        painter.setPen(outlineColor(palette()));
        painter.setBrush(isChecked() ? accentColor(palette())
                                     : palette().color(QPalette::Active, QPalette::Base));
        painter.drawPath(outline(box, roundLeft, roundRight));
        painter.setPen(isChecked() ? onAccentColor(palette()) : labelColor(palette()));
        painter.drawText(rect(), Qt::AlignCenter, text());
        if (hasFocus()) drawFocusRing(painter, rect(), kCorner, palette());
    }

  private:
    static QPainterPath outline(const QRectF& box, bool roundLeft, bool roundRight) {
        QPainterPath path;
        path.setFillRule(Qt::WindingFill);
        path.addRoundedRect(box, kCorner, kCorner);
        const double half = box.width() / 2;
        if (!roundLeft) path.addRect(box.adjusted(0, 0, -half, 0));
        if (!roundRight) path.addRect(box.adjusted(half, 0, 0, 0));
        return path.simplified();
    }

    bool isFirst_;
    bool isLast_;
};

SegmentedPicker::SegmentedPicker(const QString& name, const QStringList& options,
                                 const std::function<void(std::size_t)>& onChoose) {
    setAccessibleName(name);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (const auto& option : options) {
        auto* segment = new Segment(option, segments_.empty(), &option == &options.last());
        segment->setAccessibleName(name + QStringLiteral(": ") + option);
        const auto index = segments_.size();
        connect(segment, &QRadioButton::clicked, this, [this, index, onChoose] {
            setChosen(index);
            onChoose(index);
        });
        row->addWidget(segment);
        segments_.push_back(segment);
    }
}

// Tab goes to the chosen one; the arrow keys to the others.
void SegmentedPicker::setChosen(std::optional<std::size_t> index) {
    for (std::size_t i = 0; i < segments_.size(); ++i) {
        segments_[i]->setChosen(index == i);
        segments_[i]->setFocusPolicy(index.value_or(0) == i ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

}  // namespace ui
