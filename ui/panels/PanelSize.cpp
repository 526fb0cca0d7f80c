#include "ui/panels/PanelSize.h"

#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <algorithm>

#include "ui/widgets/Metrics.h"

namespace ui {

namespace {

constexpr int kTitleBar = 32;
constexpr int kLeastHeight = 160;

int heightFor(const platform::PanelShell& shell, const QWidget& content, int width) {
    const int given = scaled(static_cast<int>(shell.contentSize.height));
    if (shell.isResizable && given == 0) return content.sizeHint().height();
    return std::max(given, content.hasHeightForWidth() ? content.heightForWidth(width)
                                                       : content.minimumSizeHint().height());
}

}  // namespace

// As much is kept free below, for a panel stands in the middle.
QSize roomOn(const QScreen* screen) {
    if (!screen) return {QWIDGETSIZE_MAX, QWIDGETSIZE_MAX};
    return screen->availableGeometry().size() - QSize(0, 2 * scaled(kTitleBar));
}

PanelSize panelSize(const platform::PanelShell& shell, const QWidget& content, QSize room) {
    const int given = scaled(static_cast<int>(shell.contentSize.width));
    const int leastWidth = content.minimumSizeHint().width();
    const int width = std::min(std::max(given, leastWidth), room.width());
    const int height = heightFor(shell, content, width);
    const bool cutsContent = !shell.isResizable && height > room.height();
    const int bar = cutsContent ? content.style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
    return {.usual = QSize(width + bar, height).boundedTo(room),
            .least = QSize(std::max(given * 3 / 4, leastWidth), std::min(height, scaled(kLeastHeight)))
                         .boundedTo(room),
            .cutsContent = cutsContent};
}

}  // namespace ui
