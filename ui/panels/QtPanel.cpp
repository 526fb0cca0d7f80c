#include "ui/panels/QtPanel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "ui/panels/FormParts.h"
#include "ui/shell/ApplicationIcon.h"
#include "ui/widgets/Labels.h"
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

// As much is kept free below as above, for a panel stands in the middle.
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

namespace {

// The screen with the pointer; null while there is no screen.
const QScreen* screenOfUser() {
    const auto* screen = QGuiApplication::screenAt(QCursor::pos());
    return screen ? screen : QGuiApplication::primaryScreen();
}

}  // namespace

QtPanel::QtPanel(const platform::PanelShell& shell, QWidget* content, const platform::WindowFocus& focus,
                 std::function<void()> willClose)
    : isMovableByBackground_(shell.isMovableByBackground),
      content_(content),
      focus_(focus),
      willClose_(std::move(willClose)) {
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                   Qt::WindowStaysOnTopHint);
    setWindowTitle(toQString(shell.title));
    setWindowIcon(applicationIcon());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    const auto size = panelSize(shell, *content_, roomOn(screenOfUser()));
    if (size.cutsContent)
        column->addWidget(makeScrollArea(content_));
    else
        column->addWidget(content_);
    resize(size.usual);
    if (shell.isResizable)
        setMinimumSize(size.least);
    else
        setFixedSize(size.usual);
    winId();  // makes the window, so that its events can be followed
    windowHandle()->installEventFilter(this);
    centerOnScreen();
}

platform::WindowNumber QtPanel::number() const {
    return {static_cast<std::int64_t>(internalWinId())};
}

void QtPanel::centerOnScreen() {
    const auto* screen = screenOfUser();
    if (!screen) return;
    auto place = geometry();
    place.moveCenter(screen->availableGeometry().center());
    setGeometry(place);
}

void QtPanel::makeKeyAndOrderFront() {
    isComing_ = !isVisible();
    show();
    raise();
    content_->setFocus();
    if (!isComing_) focus_.bringToUser(number());
}

// A window manager takes a window over when it maps it; only then can it be asked for more.
bool QtPanel::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Expose && windowHandle()->isExposed() && std::exchange(isComing_, false))
        focus_.bringToUser(number());
    return QWidget::eventFilter(object, event);
}

void QtPanel::closeEvent(QCloseEvent* event) {
    event->accept();
    if (const auto told = std::exchange(willClose_, nullptr)) told();
}

// The keys of a dialog: Escape closes, Return presses the default button.
void QtPanel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // A button that goes when it is pressed often leaves the focus to another of its kind, which the same
        // held key would press.
        if (!event->isAutoRepeat()) pressButton();
    } else {
        QWidget::keyPressEvent(event);
    }
}

// The focused button, else the visible default button. Other keys choose among several options.
void QtPanel::pressButton() {
    auto* focused = qobject_cast<QAbstractButton*>(focusWidget());
    if (focused && focused->isEnabled() && !focused->isCheckable()) {
        auto* withMenu = qobject_cast<QToolButton*>(focused);
        if (!withMenu || !withMenu->menu()) return focused->click();
        // Not from here: the panel may go while the menu is open.
        return QTimer::singleShot(0, withMenu, &QToolButton::showMenu);
    }
    for (auto* button : findChildren<QPushButton*>())
        if (button->isDefault() && button->isVisible() && button->isEnabled()) return button->click();
}

void QtPanel::mousePressEvent(QMouseEvent* event) {
    if (isMovableByBackground_ && event->button() == Qt::LeftButton) heldAt_ = event->position().toPoint();
}

// A window manager that is told of a mere click too late would go on moving the window. The toolkit tells of
// motions after the window manager has taken the button over, too.
void QtPanel::mouseMoveEvent(QMouseEvent* event) {
    if (!heldAt_ || !(event->buttons() & Qt::LeftButton)) return;
    const auto distance = (event->position().toPoint() - *heldAt_).manhattanLength();
    if (distance < QApplication::startDragDistance()) return;
    heldAt_.reset();
    windowHandle()->startSystemMove();
}

void QtPanel::mouseReleaseEvent(QMouseEvent* /*event*/) {
    heldAt_.reset();
}

}  // namespace ui
