#include "ui/shell/QtRunLoop.h"

#include <QMetaObject>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>

namespace ui {

namespace {

// Deletes later, for an action may cancel the very timer or notifier that runs it.
struct DeleteLater {
    void operator()(QObject* object) const { object->deleteLater(); }
};

platform::Subscription cancelledBy(std::unique_ptr<QTimer, DeleteLater> timer) {
    std::shared_ptr<QTimer> shared = std::move(timer);
    return platform::Subscription([shared] {
        shared->stop();
        shared->disconnect();
    });
}

platform::Subscription watch(int descriptor, QSocketNotifier::Type type, std::function<void()> action) {
    const std::shared_ptr<QSocketNotifier> notifier(new QSocketNotifier(descriptor, type), DeleteLater());
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                     [action = std::move(action)] { action(); });
    return platform::Subscription([notifier] {
        notifier->setEnabled(false);
        notifier->disconnect();
    });
}

std::chrono::milliseconds wholeMilliseconds(platform::Duration duration) {
    return std::max(std::chrono::round<std::chrono::milliseconds>(duration), std::chrono::milliseconds(0));
}

}  // namespace

platform::Instant QtRunLoop::now() const {
    return std::chrono::time_point_cast<platform::Duration>(std::chrono::steady_clock::now());
}

platform::WallTime QtRunLoop::wallNow() const {
    return std::chrono::time_point_cast<platform::Duration>(std::chrono::system_clock::now());
}

void QtRunLoop::post(std::function<void()> action) {
    QMetaObject::invokeMethod(&mainThread_, std::move(action), Qt::QueuedConnection);
}

platform::Timer QtRunLoop::after(platform::Duration delay, std::function<void()> action) {
    std::unique_ptr<QTimer, DeleteLater> timer(new QTimer);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [action = std::move(action)] { action(); });
    timer->start(wholeMilliseconds(delay));
    return cancelledBy(std::move(timer));
}

platform::Timer QtRunLoop::every(platform::Duration interval, platform::Duration tolerance,
                                 std::function<void()> action) {
    std::unique_ptr<QTimer, DeleteLater> timer(new QTimer);
    // A coarse timer may be 5 % late, so that the system can let wake-ups coincide.
    timer->setTimerType(tolerance * 20 >= interval ? Qt::CoarseTimer : Qt::PreciseTimer);
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [action = std::move(action)] { action(); });
    timer->start(wholeMilliseconds(interval));
    return cancelledBy(std::move(timer));
}

platform::Subscription QtRunLoop::watchReadable(int descriptor, std::function<void()> action) {
    return watch(descriptor, QSocketNotifier::Read, std::move(action));
}

platform::Subscription QtRunLoop::watchWritable(int descriptor, std::function<void()> action) {
    return watch(descriptor, QSocketNotifier::Write, std::move(action));
}

}  // namespace ui
